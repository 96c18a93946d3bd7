#include <database/table.h>
#include <ql/quote.hpp>
