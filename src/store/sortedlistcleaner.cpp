#include "sortedlistcleaner.h"

#include "store/contextstore.h"
#include "store/databasehandler.h"
#include "store/objectkeys.h"
#include "store/predefineddatahelper.h"
#include "store/projectstore.h"
#include "store/taskstore.h"

#include <QDate>

using namespace SortingNamespace;

const QString SortedListCleaner::rootProjectsId = QStringLiteral("root_projects");
const QString SortedListCleaner::rootContextsId = QStringLiteral("root_contexts");
const QString SortedListCleaner::rootFavoritesId = QStringLiteral("root_favorites");
const QString SortedListCleaner::norvelBoxListId = QStringLiteral("norvelbox");
// The clean-up has always known the single-actions list one letter short; the list itself is saved
// as "1_step_actions". Both are fixed ids, or a user's order would be dropped as a missing project.
const QString SortedListCleaner::oneStepActionsListId = QStringLiteral("1_step_action");
const QString SortedListCleaner::oneStepActionsSortedListId = QStringLiteral("1_step_actions");

namespace {

bool isFixedId(const QString& listId)
{
    return listId == SortedListCleaner::rootProjectsId || listId == SortedListCleaner::rootContextsId ||
           listId == SortedListCleaner::rootFavoritesId || listId == SortedListCleaner::norvelBoxListId ||
           listId == SortedListCleaner::oneStepActionsListId ||
           listId == SortedListCleaner::oneStepActionsSortedListId;
}

// Favorites are kept by the favorites manager, which does not exist yet: without it no favorite is
// active.
bool hasActiveFavorite()
{
    return false;
}

bool isFixedListObsolete(DatabaseHandler* database, const QString& listId, ListType listType)
{
    const PredefinedDataHelper* predefined = PredefinedDataHelper::instance();
    if (listId == SortedListCleaner::norvelBoxListId && listType == ListTypeProject)
        return database->projects()->getProjectTaskCount(predefined->norvelBoxId()) == 0;
    const bool oneStepActions = listId == SortedListCleaner::oneStepActionsListId ||
                                listId == SortedListCleaner::oneStepActionsSortedListId;
    if (oneStepActions && listType == ListTypeProject)
        return database->projects()->getProjectTaskCount(predefined->oneStepActionsId()) == 0;
    if (listId == SortedListCleaner::rootProjectsId && listType == ListTypeFolder)
        return database->projects()->getRootProjects().isEmpty();
    if (listId == SortedListCleaner::rootContextsId && listType == ListTypeContext)
        return database->contexts()->getRootContexts().isEmpty();
    if (listId == SortedListCleaner::rootFavoritesId && listType == ListTypeFavorites)
        return !hasActiveFavorite();
    return false;
}

bool isProjectGone(DatabaseHandler* database, const QString& id)
{
    const DOProject project = database->projects()->getProjectById(id);
    const int state = project.value(stateKey).toInt();
    return project.isEmpty() || state == DELETED_OBJECT_STATE || state == COMPLETED_AND_DELETED_OBJECT_STATE;
}

bool isContextGone(DatabaseHandler* database, const QString& id)
{
    const DOContext context = database->contexts()->getContextById(id);
    return context.isEmpty() || context.value(stateKey).toInt() == DELETED_OBJECT_STATE;
}

bool isDayEmpty(DatabaseHandler* database, const QString& listId)
{
    const QDate day = QDate::fromString(listId, QStringLiteral("ddMMyyyy"));
    return database->tasks()->getDayTasks(day).isEmpty();
}
} // namespace

bool SortedListCleaner::isObsolete(DatabaseHandler* database, const QString& listId, ListType listType)
{
    if (isFixedId(listId))
        return isFixedListObsolete(database, listId, listType);
    switch (listType) {
    case ListTypeProject:
    case ListTypeFolder:
        return isProjectGone(database, listId);
    case ListTypeContext:
        return isContextGone(database, listId);
    case ListTypeDailyPlan:
        return isDayEmpty(database, listId);
    case ListTypeFavorites:
        return false;
    }
    return false;
}
