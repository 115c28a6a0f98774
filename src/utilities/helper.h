#pragma once

#include <QObject>
#include <QString>

#include <memory>

// Application-wide helper published to QML. Owns the place of the database file and its reset.
class Helper : public QObject
{
    Q_OBJECT

public:
    explicit Helper(QObject* parent = nullptr);
    ~Helper() override;

    static Helper* instance();

    QString databaseFilePath() const;
    bool databaseExists() const;
    // Copies the empty seed database into place, writable for everyone, since a copy out of the
    // resources arrives read-only. Fails when a file is already there.
    bool unpackDatabase();
    // Replaces the database file with a fresh seed and forgets the predefined objects. The new file
    // gets its indexes only at the next start.
    Q_INVOKABLE bool recreateDatabase();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
