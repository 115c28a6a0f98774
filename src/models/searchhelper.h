#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

// The service behind the tool bar's search field. It keeps what was typed and hands out the search
// model, building a new one whenever the search page has deleted the last.
class SearchHelper : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariant model READ model CONSTANT)
    Q_PROPERTY(QString searchString READ searchString WRITE setSearchString NOTIFY searchStringChanged)

public:
    explicit SearchHelper(QObject* parent = nullptr);
    ~SearchHelper() override;

    // Also brings the completed filters in line with the settings.
    QVariant model();
    QString searchString() const;

    // Rich text with every hit of the search string in bold and the application colour; the markup
    // already in the text, such as links, is left as it is.
    Q_INVOKABLE QString highlightSearchString(const QString& searchString, const QString& text) const;

public slots:
    void setSearchString(const QString& searchString);
    void abort();

signals:
    void searchStringChanged(const QString& searchString);
    void searchAborted();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
