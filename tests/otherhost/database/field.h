#pragma once

#include "database/decimal.h"
#include "database/tablecolumndef.h"

#include <QVariant>

/// The value of one field of a row as it was when it was read, or no field at all.
class FieldConstValue {
public:
    FieldConstValue() = default;
    /// An invalid value is a null.
    FieldConstValue(FieldType type, const QVariant& value)
        : m_type(type)
        , m_value(value)
    {
    }

    bool isNull() const { return !m_value.isValid(); }
    FieldType type() const { return m_type; }

    /// Each throws an Exception for a null and for a field of another type.
    qint32 toInt32() const;
    qint64 toInt64() const;
    double toDouble() const;
    decimal toDecimal() const;
    QString toText() const;
    qint64 toMoment() const;

private:
    const QVariant& valueOf(FieldType type) const;

    FieldType m_type = FieldType::Text;
    QVariant m_value;
};

/// A field of texts. One of any other type has no text.
class Field {
public:
    explicit Field(const FieldConstValue& value)
        : m_value(value)
    {
    }

    char toChar() const;
    QString toString() const;

private:
    FieldConstValue m_value;
};
