#pragma once

#include "../host/database/table.h"
#include <database/rowlayout_p.h>
