#include "database/field.h"

#include "database/exception.h"

#include <QDateTime>
#include <QLocale>

#include <cstring>
#include <new>

namespace {

[[noreturn]] void throwWrongType()
{
    throw Exception(QStringLiteral("Incorrect type conversion."));
}

void require(bool condition)
{
    if (!condition)
        throwWrongType();
}

template <typename T> T load(const unsigned char* place)
{
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

const QString& textAt(const unsigned char* place)
{
    return *std::launder(reinterpret_cast<const QString*>(place));
}

}

FieldConstValue::FieldConstValue(
    FieldType type, const unsigned char* value, const unsigned char* maskByte, unsigned char maskBit)
    : m_type(type)
    , m_value(value)
    , m_maskByte(maskByte)
    , m_maskBit(maskBit)
{
}

bool FieldConstValue::isNull() const
{
    return !m_value || (*m_maskByte & m_maskBit) == 0;
}

qint32 FieldConstValue::toInt32() const
{
    require(!isNull() && m_type == FieldType::Int32);
    return load<qint32>(m_value);
}

qint64 FieldConstValue::toInt64() const
{
    require(!isNull() && m_type == FieldType::Int64);
    return load<qint64>(m_value);
}

double FieldConstValue::toDouble() const
{
    require(!isNull() && m_type == FieldType::Double);
    return load<double>(m_value);
}

decimal FieldConstValue::toDecimal() const
{
    require(!isNull() && m_type == FieldType::Decimal);
    return load<decimal>(m_value);
}

QString FieldConstValue::toText() const
{
    require(!isNull() && m_type == FieldType::Text);
    return textAt(m_value);
}

qint64 FieldConstValue::toMoment() const
{
    require(!isNull() && m_type == FieldType::Moment);
    return load<qint64>(m_value);
}

QVariant FieldConstValue::toVariant() const
{
    if (isNull())
        return QVariant();
    switch (m_type) {
    case FieldType::Int32:
        return toInt32();
    case FieldType::Int64:
        return toInt64();
    case FieldType::Double:
        return toDouble();
    case FieldType::Decimal:
        return QVariant::fromValue(toDecimal());
    case FieldType::Text:
        return toText();
    case FieldType::Moment:
        return toMoment();
    }
    throwWrongType();
}

FieldValue::FieldValue(FieldType type, unsigned char* value, unsigned char* maskByte, unsigned char maskBit)
    : FieldConstValue(type, value, maskByte, maskBit)
{
}

unsigned char* FieldValue::placeFor(FieldType type)
{
    require(isValid() && m_type == type);
    // The view was made of places that can be written.
    *const_cast<unsigned char*>(m_maskByte) |= m_maskBit;
    return const_cast<unsigned char*>(m_value);
}

void FieldValue::setNull()
{
    require(isValid());
    if (m_type == FieldType::Text)
        setText(QString());
    auto* const mask = const_cast<unsigned char*>(m_maskByte);
    *mask = static_cast<unsigned char>(*mask & ~m_maskBit);
}

void FieldValue::setInt32(qint32 value)
{
    std::memcpy(placeFor(FieldType::Int32), &value, sizeof value);
}

void FieldValue::setInt64(qint64 value)
{
    std::memcpy(placeFor(FieldType::Int64), &value, sizeof value);
}

void FieldValue::setDouble(double value)
{
    std::memcpy(placeFor(FieldType::Double), &value, sizeof value);
}

void FieldValue::setDecimal(const decimal& value)
{
    std::memcpy(placeFor(FieldType::Decimal), &value, sizeof value);
}

void FieldValue::setText(const QString& value)
{
    *std::launder(reinterpret_cast<QString*>(placeFor(FieldType::Text))) = value;
}

void FieldValue::setMoment(qint64 milliseconds)
{
    std::memcpy(placeFor(FieldType::Moment), &milliseconds, sizeof milliseconds);
}

void FieldValue::setVariant(const QVariant& value)
{
    if (!value.isValid())
        return setNull();
    require(isValid());
    const int type = value.userType();
    if (m_type == FieldType::Int32 && type == QMetaType::Int)
        setInt32(value.toInt());
    else if (m_type == FieldType::Int64 && type == QMetaType::LongLong)
        setInt64(value.toLongLong());
    else if (m_type == FieldType::Double && type == QMetaType::Double)
        setDouble(value.toDouble());
    else if (m_type == FieldType::Decimal && type == qMetaTypeId<decimal>())
        setDecimal(value.value<decimal>());
    else if (m_type == FieldType::Text && type == QMetaType::QString)
        setText(value.toString());
    else if (m_type == FieldType::Moment && type == QMetaType::LongLong)
        setMoment(value.toLongLong());
    else
        throwWrongType();
}

char Field::toChar() const
{
    const QString text = toString();
    return text.isEmpty() ? '\0' : text.front().toLatin1();
}

QString Field::toString() const
{
    if (isNull())
        return QString();
    switch (m_value.type()) {
    case FieldType::Int32:
        return QString::number(m_value.toInt32());
    case FieldType::Int64:
        return QString::number(m_value.toInt64());
    case FieldType::Double:
        return QString::number(m_value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case FieldType::Decimal:
        return m_value.toDecimal().toString();
    case FieldType::Text:
        return m_value.toText();
    case FieldType::Moment:
        return QDateTime::fromMSecsSinceEpoch(m_value.toMoment(), Qt::UTC)
            .toString(QStringLiteral("yyyy.MM.dd HH:mm:ss.zzz"));
    }
    throwWrongType();
}
