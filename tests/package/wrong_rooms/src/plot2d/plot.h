#include <ql/quote.hpp>
#include <database/table.h>
