#include "database/icore.h"

ICore* ICore::instance()
{
    static ICore core;
    return &core;
}
