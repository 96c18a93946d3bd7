#include "database/shared/fieldcomparison_p.h"

#include <cstring>

bool FieldComparison::isSame(const FieldConstValue& a, const FieldConstValue& b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull();
    switch (a.type()) {
    case FieldType::Int32:
        return a.toInt32() == b.toInt32();
    case FieldType::Int64:
        return a.toInt64() == b.toInt64();
    case FieldType::Moment:
        return a.toMoment() == b.toMoment();
    case FieldType::Text:
        return a.toText() == b.toText();
    case FieldType::Decimal:
        return a.toDecimal() == b.toDecimal();
    case FieldType::Double:
        break;
    }
    return std::memcmp(a.value(), b.value(), sizeof(double)) == 0;
}
