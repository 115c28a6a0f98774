#pragma once

#include <QHash>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

// Tasks, projects, folders and contexts are plain maps keyed by the upper-case column names. The
// specific names only say in a signature which kind of object is expected; nothing checks it.
using DataObject = QVariantMap;
using DOTask = DataObject;
using DOProject = DataObject;
using DOFolder = DataObject;
using DOContext = DataObject;

// STATE is a pair of bit flags: bit 0 deleted, bit 1 completed.
constexpr int DEFAULT_OBJECT_STATE = 0;
constexpr int DELETED_OBJECT_STATE = 1;
constexpr int COMPLETED_OBJECT_STATE = 2;
constexpr int COMPLETED_AND_DELETED_OBJECT_STATE = 3;

// One tree of projects or contexts: every object by id, and the objects at level 0 with their
// CHILDREN filled in.
struct TreeHierarchy
{
    QHash<QString, DataObject> objectById;
    QList<DataObject> rootObjects;
};

// What the calendar marks on one day.
struct IndicatorState
{
    bool hasActiveTasks = false;
    bool hasOverdueTasks = false;
    bool hasRepeatedTasks = false;
};

Q_DECLARE_METATYPE(TreeHierarchy)
Q_DECLARE_METATYPE(IndicatorState)

// Registers the object types under every name that queued calls across the database thread use
// ("DOTask", "QList<DOTask>", "TreeHierarchy", ...). Safe to call more than once.
void registerDataObjectMetaTypes();
