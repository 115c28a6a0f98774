#include "dataobject.h"

void registerDataObjectMetaTypes()
{
    qRegisterMetaType<DataObject>("DataObject");
    qRegisterMetaType<DOTask>("DOTask");
    qRegisterMetaType<DOProject>("DOProject");
    qRegisterMetaType<DOFolder>("DOFolder");
    qRegisterMetaType<DOContext>("DOContext");
    qRegisterMetaType<QList<DataObject>>("QList<DataObject>");
    qRegisterMetaType<QList<DOTask>>("QList<DOTask>");
    qRegisterMetaType<QList<DOProject>>("QList<DOProject>");
    qRegisterMetaType<QList<DOFolder>>("QList<DOFolder>");
    qRegisterMetaType<QList<DOContext>>("QList<DOContext>");
    qRegisterMetaType<TreeHierarchy>("TreeHierarchy");
    qRegisterMetaType<IndicatorState>("IndicatorState");
}
