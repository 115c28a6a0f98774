#include "urlhelper.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {
const QString webLinkExpression =
    QStringLiteral(R"((http|https|ftp|ftps)\://[a-zA-Z0-9\-\.]+\.[a-zA-Z]{2,4}([^\s<]*)?)");
const QString fileLinkExpression = QStringLiteral(R"((?<!")file:///([^\s<]*))");
const QString quotedFileLinkExpression = QStringLiteral(R"re((?<!=)"file:///.*")re");
const QString mailExpression = QStringLiteral(R"(\w+([-+.']\w+)*@\w+([-.]\w+)*\.\w+([-.]\w+)*)");
const QString linkTemplate = QStringLiteral(R"(<a href="%1">%1</a>)");
const QString mailTemplate = QStringLiteral(R"(<a href="mailto:%1">%1</a>)");

QString escapeHtml(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('<'), QLatin1String("&lt;"))
        .replace(QLatin1Char('>'), QLatin1String("&gt;"))
        .replace(QLatin1Char('\n'), QLatin1String("<br>"));
}

bool isEnclosedBy(const QString& text, const QRegularExpressionMatch& match, const QString& charsBefore,
                  const QString& charsAfter)
{
    if (charsBefore.isEmpty() || charsAfter.isEmpty())
        return false;
    const int before = match.capturedStart() - 1;
    const int after = match.capturedEnd();
    if (before < 0 || after >= text.size())
        return false;
    return charsBefore.contains(text.at(before)) && charsAfter.contains(text.at(after));
}

QString withoutSurroundingQuotes(QString matchText)
{
    if (matchText.startsWith(QLatin1Char('"')))
        matchText.remove(0, 1);
    if (matchText.endsWith(QLatin1Char('"')))
        matchText.chop(1);
    return matchText;
}

// Every occurrence of each collected text is replaced in a single pass, longest text first, so that a
// link never lands inside the markup made for a shorter one that it contains.
QString applyReplacements(const QString& text, const QHash<QString, QString>& replacements)
{
    if (replacements.isEmpty())
        return text;
    QStringList matchTexts = replacements.keys();
    std::sort(matchTexts.begin(), matchTexts.end(), [](const QString& left, const QString& right) {
        return left.size() != right.size() ? left.size() > right.size() : left < right;
    });
    for (QString& matchText : matchTexts)
        matchText = QRegularExpression::escape(matchText);
    const QRegularExpression anyMatchText(matchTexts.join(QLatin1Char('|')));

    QString result;
    int copiedUpTo = 0;
    QRegularExpressionMatchIterator matches = anyMatchText.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += text.midRef(copiedUpTo, match.capturedStart() - copiedUpTo);
        result += replacements.value(match.captured());
        copiedUpTo = match.capturedEnd();
    }
    result += text.midRef(copiedUpTo);
    return result;
}
} // namespace

UrlHelper::UrlHelper(QObject* parent)
    : QObject(parent)
{}

UrlHelper::~UrlHelper() = default;

QString UrlHelper::convertToHtmlUrls(const QString& text)
{
    QString html = escapeHtml(text);
    html = replaceUsingRegexp(html, webLinkExpression, linkTemplate, QString(), QString());
    html = replaceUsingRegexp(html, fileLinkExpression, linkTemplate, QString(), QString());
    html = replaceUsingRegexp(html, quotedFileLinkExpression, linkTemplate, QString(), QString());
    // An address between "=" and "&" is a value in the query of a link made above.
    return replaceUsingRegexp(html, mailExpression, mailTemplate, QStringLiteral("="), QStringLiteral("&"));
}

QString UrlHelper::replaceUsingRegexp(const QString& text, const QString& expression,
                                      const QString& replacementTemplate, const QString& charsBefore,
                                      const QString& charsAfter)
{
    QHash<QString, QString> replacements;
    QRegularExpressionMatchIterator matches = QRegularExpression(expression).globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedLength() == 0 || isEnclosedBy(text, match, charsBefore, charsAfter))
            continue;
        const QString matchText = match.captured();
        const QString linkText = charsAfter.isEmpty() ? withoutSurroundingQuotes(matchText) : matchText;
        replacements.insert(matchText, replacementTemplate.arg(linkText));
    }
    return applyReplacements(text, replacements);
}
