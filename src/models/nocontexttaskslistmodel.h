#pragma once

#include "models/listmodel.h"

// The tasks without a context. Its section key is the parent project, and it names that project.
class NoContextTasksListModel : public ListModel
{
    Q_OBJECT

public:
    enum Roles { parentProjectRole = objectTypeRole, parentProjectNameRole };

    explicit NoContextTasksListModel(DataFunction dataFunction, QObject* parent = nullptr);
    ~NoContextTasksListModel() override;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

protected:
    // Names are read afresh after each refresh.
    void prepareUpdate() override;

private:
    QVariant projectName(const QString& projectId) const;
};
