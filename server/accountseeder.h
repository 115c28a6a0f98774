#pragma once

#include <QtGlobal>

// The objects a new account starts with at revision 1: the two inbox projects, the demo folders,
// a demo project with its tasks, and the demo contexts. Clients match them by their predefined
// codes with the demo objects they made themselves before logging in.
class AccountSeeder
{
public:
    // Inside the caller's transaction.
    static bool seed(qint64 accountId, bool russian);
};
