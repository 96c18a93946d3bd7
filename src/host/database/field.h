#pragma once

#include "database/decimal.h"
#include "database/tablecolumndef.h"

#include <QString>
#include <QVariant>

/// A view of one field of a row: its type, its value's place and its bit in the row's null mask.
///
/// A view owns nothing: it is valid as long as its row. Each typed read expects the field's own type and
/// a value that is not null; otherwise it throws Exception("Incorrect type conversion."). A view of a
/// column that the table has not is null and of no type.
class FieldConstValue {
public:
    /// A view of no field.
    FieldConstValue() = default;
    /// A view of a field at these places of a row. For the database's own use.
    FieldConstValue(
        FieldType type, const unsigned char* value, const unsigned char* maskByte, unsigned char maskBit);

    /// Whether there is a field behind this view at all.
    bool isValid() const { return m_value != nullptr; }
    /// Of meaning when isValid().
    FieldType type() const { return m_type; }
    /// The value's bytes inside the row, to be copied out; for a text an aligned QString.
    const unsigned char* value() const { return m_value; }
    /// The byte of the row's null mask that holds this field's bit; a set bit means that a value is present.
    const unsigned char* maskByte() const { return m_maskByte; }
    /// That byte's bit as a mask, one of 1, 2, 4 to 128.
    unsigned char maskBit() const { return m_maskBit; }
    /// Whether there is no value, or no field.
    bool isNull() const;

    /// The value of a field of the type in the name; a moment in milliseconds since 1970-01-01 00:00:00 UTC.
    /// @{
    qint32 toInt32() const;
    qint64 toInt64() const;
    double toDouble() const;
    decimal toDecimal() const;
    QString toText() const;
    qint64 toMoment() const;
    /// @}

    /// The value as int, qlonglong, double, decimal, QString or qlonglong; an invalid QVariant for null.
    QVariant toVariant() const;

protected:
    /// What type() says.
    FieldType m_type = FieldType::Int32;
    /// What value() says; null for no field.
    const unsigned char* m_value = nullptr;
    /// What maskByte() says; null for no field.
    const unsigned char* m_maskByte = nullptr;
    /// What maskBit() says.
    unsigned char m_maskBit = 0;
};

/// A view through which the field can be written. A write of another type than the field's, and any write
/// through a view of no field, throws Exception("Incorrect type conversion.") and changes nothing.
class FieldValue : public FieldConstValue {
public:
    /// A view of no field.
    FieldValue() = default;
    /// A view of a field at these places of a row. For the database's own use.
    FieldValue(FieldType type, unsigned char* value, unsigned char* maskByte, unsigned char maskBit);

    /// Takes the value away.
    void setNull();
    /// Writes a field of the type in the name; a moment in milliseconds since 1970-01-01 00:00:00 UTC.
    /// @{
    void setInt32(qint32 value);
    void setInt64(qint64 value);
    void setDouble(double value);
    void setDecimal(const decimal& value);
    void setText(const QString& value);
    void setMoment(qint64 milliseconds);
    /// @}
    /// Takes what toVariant() gives; an invalid QVariant sets null.
    void setVariant(const QVariant& value);

private:
    unsigned char* placeFor(FieldType type);
};

/// One field of a row for display and for reading whatever its type.
class Field {
public:
    /// No field: null.
    Field() = default;
    /// The field that a view shows, valid as long as that.
    explicit Field(const FieldConstValue& value)
        : m_value(value)
    {
    }

    /// The view of the field.
    const FieldConstValue& value() const { return m_value; }
    /// Whether there is no value, or no field.
    bool isNull() const { return m_value.isNull(); }

    /// The first character of toString(), in Latin-1; '\0' for null, for an empty text and for a character
    /// outside Latin-1.
    char toChar() const;

    /// Text as it is, numbers in C notation, a moment as "yyyy.MM.dd HH:mm:ss.zzz" in UTC, null as an
    /// empty text.
    QString toString() const;

private:
    FieldConstValue m_value;
};
