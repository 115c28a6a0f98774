#include "listmodelprivate.h"

#include <utility>

ListModelPrivate::ListModelPrivate(DataFunction dataFunction)
    : dataFunction(std::move(dataFunction))
{}

ListModelPrivate::~ListModelPrivate() = default;
