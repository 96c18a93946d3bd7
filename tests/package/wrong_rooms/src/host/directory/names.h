#include <database/layout_p.h>
#include <database/table.h>
