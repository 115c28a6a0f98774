#pragma once

#include <QObject>
#include <QString>

#include <memory>

// Holds the ids of the two projects that every installation has without a row: the inbox (Norvel
// Box) and One Step Actions. Sync replaces the defaults with the server's ids at each start.
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

signals:
    void norvelBoxIdChanged(const QString& id);
    void oneStepActionsIdChanged(const QString& id);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
