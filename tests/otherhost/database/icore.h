#pragma once

#include "database/database.h"

/// What a program has one of.
class ICore {
public:
    static ICore* instance();

    Database* database() { return &m_database; }

private:
    Database m_database;
};
