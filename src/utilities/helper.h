#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

// Small services for the interface layer: the place of the database file and its reset, date
// strings, the recent project list, temporary timers, the launcher badge and a few questions about
// the desktop.
class Helper : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool clipboardHasText READ clipboardHasText NOTIFY clipboardHasTextChanged)

public:
    static constexpr int maxRecentProjects = 10;

    // Needs the application object: it follows the system clipboard.
    static Helper* instance();
    explicit Helper(QObject* parent = nullptr);
    ~Helper() override;

    QString databaseFilePath() const;
    bool databaseExists() const;
    // Copies the empty seed database into place, writable for everyone, since a copy out of the
    // resources arrives read-only. Fails when a file is already there.
    bool unpackDatabase();
    // Replaces the database file with a fresh seed and forgets the predefined objects. The new file
    // gets its indexes only at the next start.
    Q_INVOKABLE bool recreateDatabase();

    // The stored wall-clock value (its UTC fields) as a local moment with the same date and time.
    Q_INVOKABLE QDateTime toUtcDateTime(const QVariant& dateTime) const;
    // "Today, 6:07 PM" or "March 5, 2024, 6:07 PM", in the application language.
    Q_INVOKABLE QString toUtcString(const QVariant& dateTime) const;
    QString toUtcString(const QVariant& dateTime, const QString& language) const;

    // Puts newProject first, or moves an entry with the same ID to the front with its old map, and
    // keeps the first maxRecentProjects entries.
    Q_INVOKABLE QVariantList handleRecentProjectList(const QVariantList& list,
                                                     const QVariantMap& newProject) const;
    // The pseudo-objects keep English names in their maps; the interface shows them in its language.
    // Bindings that call this are evaluated anew when the engine retranslates.
    Q_INVOKABLE QString objectDisplayName(const QVariantMap& object) const;
    // A single-shot QTimer that deletes itself once it has fired.
    Q_INVOKABLE QVariant getTemporaryTimer() const;

    bool clipboardHasText() const;
    Q_INVOKABLE bool isTouchDeviceAvailable() const;
    Q_INVOKABLE void setBadgeLabelTaskCount(int count);
    Q_INVOKABLE bool hasDefaultMailClient() const;

signals:
    void clipboardHasTextChanged();

private:
    void updateClipboardHasText();

    struct Private;
    std::unique_ptr<Private> d;
};
