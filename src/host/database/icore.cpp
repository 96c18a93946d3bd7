#include "database/icore.h"

#include "database/database.h"

ICore::~ICore() = default;

namespace {

/// The core of the reference host: its tables are in memory.
class ReferenceCore : public ICore {
public:
    Database* database() const override { return &m_database; }

private:
    mutable Database m_database;
};

}

ICore* ICore::instance()
{
    static ReferenceCore core;
    return &core;
}
