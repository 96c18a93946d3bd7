#pragma once

#include "database/field.h"

namespace FieldComparison {

/// Whether two fields of the same column hold the same; of doubles every bit counts.
bool isSame(const FieldConstValue& a, const FieldConstValue& b);

}
