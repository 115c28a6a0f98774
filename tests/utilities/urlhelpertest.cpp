#include "utilities/urlhelper.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class UrlHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void convertToHtmlUrlsLinksAddresses_data();
    void convertToHtmlUrlsLinksAddresses();
    void replaceUsingRegexpFollowsSkipAndQuoteRules_data();
    void replaceUsingRegexpFollowsSkipAndQuoteRules();
    void convertToHtmlUrlsIsInvokable();
};

void UrlHelperTest::convertToHtmlUrlsLinksAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");

    QTest::newRow("empty text") << QString() << QString();
    QTest::newRow("plain text") << QStringLiteral("Buy milk") << QStringLiteral("Buy milk");
    QTest::newRow("ampersand and angle brackets")
        << QStringLiteral("Tom & Jerry <3 > 2") << QStringLiteral("Tom &amp; Jerry &lt;3 &gt; 2");
    QTest::newRow("less-than sign creates no tag")
        << QStringLiteral("<b>bold</b>") << QStringLiteral("&lt;b&gt;bold&lt;/b&gt;");
    QTest::newRow("line feeds become breaks")
        << QStringLiteral("one\ntwo\n") << QStringLiteral("one<br>two<br>");
    QTest::newRow("web link") << QStringLiteral("see http://example.com/a/b?q=1 now")
                              << QStringLiteral("see <a href=\"http://example.com/a/b?q=1\">"
                                                "http://example.com/a/b?q=1</a> now");
    QTest::newRow("web link with escaped ampersand")
        << QStringLiteral("http://example.com/?a=1&b=2")
        << QStringLiteral("<a href=\"http://example.com/?a=1&amp;b=2\">http://example.com/?a=1&amp;b=2</a>");
    QTest::newRow("line break ends a link")
        << QStringLiteral("http://example.com/notes\nnext line")
        << QStringLiteral("<a href=\"http://example.com/notes\">http://example.com/notes</a><br>next line");
    QTest::newRow("https link") << QStringLiteral("https://secure.example.org")
                                << QStringLiteral("<a href=\"https://secure.example.org\">"
                                                  "https://secure.example.org</a>");
    QTest::newRow("ftp link") << QStringLiteral("get ftp://files.example.net/pub/a.zip")
                              << QStringLiteral("get <a href=\"ftp://files.example.net/pub/a.zip\">"
                                                "ftp://files.example.net/pub/a.zip</a>");
    // The four-letter limit leaves the fifth letter to the optional tail, so the address is whole.
    QTest::newRow("top-level part of five letters")
        << QStringLiteral("http://example.abcde/x")
        << QStringLiteral("<a href=\"http://example.abcde/x\">http://example.abcde/x</a>");
    QTest::newRow("host without a top-level part")
        << QStringLiteral("http://localhost:8080/") << QStringLiteral("http://localhost:8080/");
    QTest::newRow("two links") << QStringLiteral("http://a.org and http://b.org")
                               << QStringLiteral("<a href=\"http://a.org\">http://a.org</a> and "
                                                 "<a href=\"http://b.org\">http://b.org</a>");
    QTest::newRow("link and a longer link that contains it")
        << QStringLiteral("http://a.org http://a.org/x")
        << QStringLiteral("<a href=\"http://a.org\">http://a.org</a> "
                          "<a href=\"http://a.org/x\">http://a.org/x</a>");
    QTest::newRow("file link")
        << QStringLiteral("open file:///home/user/notes.txt please")
        << QStringLiteral(
               "open <a href=\"file:///home/user/notes.txt\">file:///home/user/notes.txt</a> please");
    QTest::newRow("quoted file link with spaces")
        << QStringLiteral("open \"file:///home/user/my notes.txt\" please")
        << QStringLiteral("open <a href=\"file:///home/user/my notes.txt\">"
                          "file:///home/user/my notes.txt</a> please");
    QTest::newRow("mail address") << QStringLiteral("write to john.doe@example.com today")
                                  << QStringLiteral("write to <a href=\"mailto:john.doe@example.com\">"
                                                    "john.doe@example.com</a> today");
    QTest::newRow("mail address at the end")
        << QStringLiteral("to=ann@example.com")
        << QStringLiteral("to=<a href=\"mailto:ann@example.com\">ann@example.com</a>");
    QTest::newRow("mail address inside a link's query is left alone")
        << QStringLiteral("http://example.com/share?to=john@example.com&x=1")
        << QStringLiteral("<a href=\"http://example.com/share?to=john@example.com&amp;x=1\">"
                          "http://example.com/share?to=john@example.com&amp;x=1</a>");
}

void UrlHelperTest::convertToHtmlUrlsLinksAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, html);

    QCOMPARE(UrlHelper::convertToHtmlUrls(text), html);
}

void UrlHelperTest::replaceUsingRegexpFollowsSkipAndQuoteRules_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("charsBefore");
    QTest::addColumn<QString>("charsAfter");
    QTest::addColumn<QString>("result");

    const QString number = QStringLiteral("\\d+");
    const QString quotedWord = QStringLiteral("\"\\w+\"");
    QTest::newRow("no lists") << QStringLiteral("a=1&b") << number << QString() << QString()
                              << QStringLiteral("a=[1]&b");
    QTest::newRow("enclosed match is skipped") << QStringLiteral("a=1&b") << number << QStringLiteral("=")
                                               << QStringLiteral("&") << QStringLiteral("a=1&b");
    QTest::newRow("any listed character counts") << QStringLiteral("a:1;b") << number << QStringLiteral("=:")
                                                 << QStringLiteral("&;") << QStringLiteral("a:1;b");
    QTest::newRow("only the character before is listed")
        << QStringLiteral("a=1 b") << number << QStringLiteral("=") << QStringLiteral("&")
        << QStringLiteral("a=[1] b");
    QTest::newRow("only the character after is listed")
        << QStringLiteral("a 1&b") << number << QStringLiteral("=") << QStringLiteral("&")
        << QStringLiteral("a [1]&b");
    QTest::newRow("empty list before")
        << QStringLiteral("a=1&b") << number << QString() << QStringLiteral("&") << QStringLiteral("a=[1]&b");
    QTest::newRow("match at the end is never skipped")
        << QStringLiteral("a=1") << number << QStringLiteral("=") << QStringLiteral("&")
        << QStringLiteral("a=[1]");
    QTest::newRow("match at the start") << QStringLiteral("1&b") << number << QStringLiteral("=")
                                        << QStringLiteral("&") << QStringLiteral("[1]&b");
    QTest::newRow("replacement by match text reaches a skipped twin")
        << QStringLiteral("x=1&y 1") << number << QStringLiteral("=") << QStringLiteral("&")
        << QStringLiteral("x=[1]&y [1]");
    QTest::newRow("quotes stripped without chars after")
        << QStringLiteral("say \"hi\" now") << quotedWord << QString() << QString()
        << QStringLiteral("say [hi] now");
    QTest::newRow("quotes kept with chars after")
        << QStringLiteral("say \"hi\" now") << quotedWord << QStringLiteral("=") << QStringLiteral("&")
        << QStringLiteral("say [\"hi\"] now");
    QTest::newRow("no match") << QStringLiteral("none") << number << QString() << QString()
                              << QStringLiteral("none");
}

void UrlHelperTest::replaceUsingRegexpFollowsSkipAndQuoteRules()
{
    QFETCH(QString, text);
    QFETCH(QString, expression);
    QFETCH(QString, charsBefore);
    QFETCH(QString, charsAfter);
    QFETCH(QString, result);

    QCOMPARE(UrlHelper::replaceUsingRegexp(text, expression, QStringLiteral("[%1]"), charsBefore, charsAfter),
             result);
}

void UrlHelperTest::convertToHtmlUrlsIsInvokable()
{
    UrlHelper helper;
    QString html;

    QVERIFY(QMetaObject::invokeMethod(&helper, "convertToHtmlUrls", Q_RETURN_ARG(QString, html),
                                      Q_ARG(QString, QStringLiteral("a@b.org"))));

    QCOMPARE(html, QStringLiteral("<a href=\"mailto:a@b.org\">a@b.org</a>"));
}

NORVEL_TEST_MAIN(UrlHelperTest)
#include "urlhelpertest.moc"
