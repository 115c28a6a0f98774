#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

// Holds the ids of the two projects that every installation has without a row: the inbox (Norvel
// Box) and One Step Actions. Sync replaces the defaults with the server's ids at each start.
//
// It also makes the demo folders and contexts that a new user starts with, and records their ids in
// "predefined_objects.dat": under the seed number the server knows them by, and in the list that
// counts leave out.
class PredefinedDataHelper : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString norvelBoxId READ norvelBoxId WRITE setNorvelBoxId NOTIFY norvelBoxIdChanged)
    Q_PROPERTY(QString oneStepActionsId READ oneStepActionsId WRITE setOneStepActionsId NOTIFY
                   oneStepActionsIdChanged)

public:
    static constexpr const char* defaultNorvelBoxId = "f206bbf9-8d12-4482-a142-d02efefe8bbc";
    static constexpr const char* defaultOneStepActionsId = "a248f791-d83e-49ca-93df-32d9718cdb91";

    explicit PredefinedDataHelper(QObject* parent = nullptr);
    ~PredefinedDataHelper() override;

    static PredefinedDataHelper* instance();

    QString norvelBoxId() const;
    void setNorvelBoxId(const QString& id);
    QString oneStepActionsId() const;
    void setOneStepActionsId(const QString& id);

    // Put the default id back and announce it, changed or not.
    void unsetNorvelBoxId();
    void unsetOneStepActionsId();

    // Each creates its demo objects, in the application language, and records them; neither looks
    // whether they were made before: the caller asks the matching ...Created() first.
    Q_INVOKABLE void createPredefinedFolders();
    Q_INVOKABLE bool predefinedFoldersCreated();
    Q_INVOKABLE void createPredefinedContexts();
    Q_INVOKABLE bool predefinedContextsCreated();

signals:
    void norvelBoxIdChanged(const QString& id);
    void oneStepActionsIdChanged(const QString& id);

private:
    void recordCreatedObjects(const QStringList& ids, const QString& name);

    struct Private;
    std::unique_ptr<Private> d;
};
