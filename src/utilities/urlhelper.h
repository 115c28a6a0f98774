#pragma once

#include <QObject>
#include <QString>

// Turns the plain text that users type into names and memos into the rich text that labels show,
// with web, file and mail addresses made into live links.
class UrlHelper : public QObject
{
    Q_OBJECT

public:
    explicit UrlHelper(QObject* parent = nullptr);
    ~UrlHelper() override;

    Q_INVOKABLE static QString convertToHtmlUrls(const QString& text);

    // Replaces every match of expression by replacementTemplate with %1 standing for the match.
    // A match is left alone when the character before it is one of charsBefore and the character
    // after it one of charsAfter (both non-empty). With an empty charsAfter, double quotes around
    // the match are dropped before it fills the template.
    static QString replaceUsingRegexp(const QString& text, const QString& expression,
                                      const QString& replacementTemplate, const QString& charsBefore,
                                      const QString& charsAfter);
};
