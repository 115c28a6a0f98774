#pragma once

#include "sync/sortingnamespace.h"

#include <QString>

class DatabaseHandler;

// Decides which sorted lists have outlived what they sort. Runs on the database thread.
class SortedListCleaner
{
public:
    // Fixed list ids; every other list id is an object's id or a day as "ddMMyyyy".
    static const QString rootProjectsId;
    static const QString rootContextsId;
    static const QString rootFavoritesId;
    static const QString norvelBoxListId;
    static const QString oneStepActionsListId;
    static const QString oneStepActionsSortedListId;

    // True when the list's object is missing or deleted, its day has no stored task, or a fixed list
    // has nothing left to show. A fixed id under another list type is never obsolete.
    static bool isObsolete(DatabaseHandler* database, const QString& listId,
                           SortingNamespace::ListType listType);
};
