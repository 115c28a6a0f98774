#include "utilities/urlhelper.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

namespace {
QString link(const QString& target)
{
    return QStringLiteral("<a href=\"%1\">%1</a>").arg(target);
}

QString mailLink(const QString& address)
{
    return QStringLiteral("<a href=\"mailto:%1\">%1</a>").arg(address);
}
} // namespace

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
    QTest::newRow("less-than sign creates no tag") << "<b>Tom & Jerry</b>"
                                                   << "&lt;b&gt;Tom &amp; Jerry&lt;/b&gt;";
    QTest::newRow("web link") << "see http://example.com/a?q=1 now"
                              << "see " + link("http://example.com/a?q=1") + " now";
    QTest::newRow("line break ends a link")
        << "http://example.com/a\nnext" << link("http://example.com/a") + "<br>next";
    QTest::newRow("ftp link") << "ftp://files.example.net/a.zip" << link("ftp://files.example.net/a.zip");
    // The four-letter limit leaves the fifth letter to the optional tail, so the address is whole.
    QTest::newRow("top-level part of five letters")
        << "http://example.abcde/x" << link("http://example.abcde/x");
    QTest::newRow("host without a top-level part") << "http://localhost:8080/"
                                                   << "http://localhost:8080/";
    QTest::newRow("link and a longer link that contains it")
        << "http://a.org http://a.org/x" << link("http://a.org") + " " + link("http://a.org/x");
    QTest::newRow("file link") << "open file:///home/notes.txt"
                               << "open " + link("file:///home/notes.txt");
    QTest::newRow("quoted file link with spaces") << "open \"file:///home/my notes.txt\" now"
                                                  << "open " + link("file:///home/my notes.txt") + " now";
    QTest::newRow("mail address") << "to john.doe@example.com today"
                                  << "to " + mailLink("john.doe@example.com") + " today";
    QTest::newRow("mail address at the end") << "to=ann@example.com"
                                             << "to=" + mailLink("ann@example.com");
    QTest::newRow("mail address inside a link's query is left alone")
        << "http://example.com/?to=jo@example.com&x=1"
        << link("http://example.com/?to=jo@example.com&amp;x=1");
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
    QTest::addColumn<QString>("charsBefore");
    QTest::addColumn<QString>("charsAfter");
    QTest::addColumn<QString>("result");

    const QString before = QStringLiteral("=");
    const QString after = QStringLiteral("&");
    QTest::newRow("no lists") << "a=1&b" << QString() << QString() << "a=[1]&b";
    QTest::newRow("enclosed match is skipped") << "a=1&b" << before << after << "a=1&b";
    QTest::newRow("any listed character counts")
        << "a:1;b" << QStringLiteral("=:") << QStringLiteral("&;") << "a:1;b";
    QTest::newRow("only the character before is listed") << "a=1 b" << before << after << "a=[1] b";
    QTest::newRow("only the character after is listed") << "a 1&b" << before << after << "a [1]&b";
    QTest::newRow("match at the end is never skipped") << "a=1" << before << after << "a=[1]";
    QTest::newRow("match at the start") << "1&b" << before << after << "[1]&b";
    QTest::newRow("replacement by match text reaches a skipped twin")
        << "x=1&y 1" << before << after << "x=[1]&y [1]";
    QTest::newRow("quotes stripped without chars after")
        << "say \"hi\"" << QString() << QString() << "say [hi]";
    QTest::newRow("quotes kept with chars after") << "say \"hi\"" << before << after << "say [\"hi\"]";
}

void UrlHelperTest::replaceUsingRegexpFollowsSkipAndQuoteRules()
{
    QFETCH(QString, text);
    QFETCH(QString, charsBefore);
    QFETCH(QString, charsAfter);
    QFETCH(QString, result);
    const QString numberOrQuotedWord = QStringLiteral("\\d+|\"\\w+\"");

    QCOMPARE(UrlHelper::replaceUsingRegexp(text, numberOrQuotedWord, "[%1]", charsBefore, charsAfter),
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
