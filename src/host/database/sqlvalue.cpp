#include "sqlvalue_p.h"

#include "database/qtversions_p.h"

#include <QLocale>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr quint64 plainNanBits = 0x7ff8000000000000ULL;

QString nanPrefix()
{
    return QStringLiteral("nan:");
}

QString negativeZero()
{
    return QStringLiteral("-0");
}

QString textOfDouble(double value)
{
    if (value == 0.0)
        return std::signbit(value) ? negativeZero() : QStringLiteral("0");
    if (!std::isnan(value))
        return QString::number(value, 'g', QLocale::FloatingPointShortest);
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    if (bits == plainNanBits)
        return QStringLiteral("nan");
    return nanPrefix() + QString::number(bits, 16);
}

bool readDouble(const QString& text, double& value)
{
    bool ok = true;
    if (text == negativeZero()) {
        value = -0.0;
        return ok;
    }
    quint64 bits = plainNanBits;
    if (text.startsWith(nanPrefix()))
        bits = text.mid(nanPrefix().size()).toULongLong(&ok, 16);
    else if (text != QLatin1String("nan")) {
        value = text.toDouble(&ok);
        return ok;
    }
    std::memcpy(&value, &bits, sizeof value);
    return ok && std::isnan(value);
}

/// The text without halves of surrogate pairs, which would swallow the character behind them.
QString withWholePairs(const QString& text)
{
    if (text.isValidUtf16())
        return text;
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const bool isPair
            = character.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            result.append(text.constData() + i++, 2);
        else
            result.append(character.isSurrogate() ? QChar(QChar::ReplacementCharacter) : character);
    }
    return result;
}

QString storableText(const QString& text, bool isSqlite)
{
    if (text.isEmpty())
        return QLatin1String(""); // A null QString would be stored as NULL.
    QString valid = withWholePairs(text);
    // A text of a server ends at the first of these.
    if (!isSqlite)
        valid.replace(QChar::Null, QChar(QChar::ReplacementCharacter));
    // SQLite, and Qt for a server, take a leading byte order mark for a description of the text and drop it,
    // SQLite also a swapped one.
    const bool hasMark = valid.front() == QChar(QChar::ByteOrderMark)
        || (isSqlite && valid.front() == QChar(QChar::ByteOrderSwapped));
    return hasMark ? QChar(QChar::ByteOrderMark) + valid : valid;
}

bool isWhole(const QVariant& value)
{
    const int type = value.userType();
    // The driver for PostgreSQL takes the sign for the type.
    const bool isUnsigned
        = type == QMetaType::ULongLong && value.toULongLong() <= quint64(std::numeric_limits<qint64>::max());
    return type == QMetaType::Int || type == QMetaType::LongLong || isUnsigned;
}

bool setWhole(qint64 number, FieldValue& field)
{
    if (field.type() == FieldType::Int64)
        field.setInt64(number);
    else if (field.type() == FieldType::Moment)
        field.setMoment(number);
    else if (number < std::numeric_limits<qint32>::min() || number > std::numeric_limits<qint32>::max())
        return false;
    else
        field.setInt32(static_cast<qint32>(number));
    return true;
}

bool setFromText(const QString& text, FieldValue& field)
{
    if (field.type() == FieldType::Text) {
        field.setText(text);
        return true;
    }
    bool ok = false;
    if (field.type() == FieldType::Decimal) {
        const decimal number = decimal::fromString(text, &ok);
        if (ok)
            field.setDecimal(number);
        return ok;
    }
    double number = 0.0;
    ok = readDouble(text, number);
    if (ok)
        field.setDouble(number);
    return ok;
}

QVariant nullOf(FieldType type)
{
    const bool isWholeType
        = type == FieldType::Int32 || type == FieldType::Int64 || type == FieldType::Moment;
    return QtVersions::nullOf(isWholeType ? QMetaType::LongLong : QMetaType::QString);
}

}

QVariant SqlValue::fromField(const FieldConstValue& field, bool isSqlite)
{
    if (field.isNull())
        return nullOf(field.type());
    switch (field.type()) {
    case FieldType::Double:
        return textOfDouble(field.toDouble());
    case FieldType::Decimal:
        return field.toDecimal().toString();
    case FieldType::Text:
        return storableText(field.toText(), isSqlite);
    case FieldType::Int32:
    case FieldType::Int64:
    case FieldType::Moment:
        break;
    }
    return field.toVariant();
}

bool SqlValue::toField(const QVariant& value, FieldValue field)
{
    field.setNull();
    if (value.isNull())
        return true;
    const FieldType type = field.type();
    if (type == FieldType::Int32 || type == FieldType::Int64 || type == FieldType::Moment)
        return isWhole(value) && setWhole(value.toLongLong(), field);
    return value.userType() == QMetaType::QString && setFromText(value.toString(), field);
}
