#include "database/exception.h"
#include "database/field.h"
#include "support/testmain.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

Q_DECLARE_METATYPE(FieldType)

namespace {

const QString wrongType = QStringLiteral("Incorrect type conversion.");

QString textOfException(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.text();
    }
    return QString();
}

/// One field in a buffer of its own, at an odd address unless it is a text.
class Cell {
public:
    explicit Cell(FieldType type)
        : m_type(type)
    {
    }

    FieldValue view()
    {
        unsigned char* const place
            = m_type == FieldType::Text ? reinterpret_cast<unsigned char*>(&m_text) : m_bytes + 1;
        return FieldValue(m_type, place, &m_mask, 4);
    }
    unsigned char mask() const { return m_mask; }

private:
    FieldType m_type;
    QString m_text;
    alignas(8) unsigned char m_bytes[32] = {};
    unsigned char m_mask = 0xa1;
};

const FieldType allTypes[] = {FieldType::Int32, FieldType::Int64, FieldType::Double, FieldType::Decimal,
    FieldType::Text, FieldType::Moment};

QVariant sample(FieldType type)
{
    switch (type) {
    case FieldType::Int32:
        return -7;
    case FieldType::Int64:
        return std::numeric_limits<qint64>::min();
    case FieldType::Double:
        return 0.1;
    case FieldType::Decimal:
        return QVariant::fromValue(decimal::fromUnits(-1250, 2));
    case FieldType::Text:
        return QStringLiteral("text");
    case FieldType::Moment:
        break;
    }
    return qint64(1700000000123);
}

using Read = std::function<void(const FieldConstValue&)>;
using Write = std::function<void(FieldValue&)>;

const std::pair<FieldType, Read> reads[] = {
    {FieldType::Int32, [](const FieldConstValue& v) { v.toInt32(); }},
    {FieldType::Int64, [](const FieldConstValue& v) { v.toInt64(); }},
    {FieldType::Double, [](const FieldConstValue& v) { v.toDouble(); }},
    {FieldType::Decimal, [](const FieldConstValue& v) { v.toDecimal(); }},
    {FieldType::Text, [](const FieldConstValue& v) { v.toText(); }},
    {FieldType::Moment, [](const FieldConstValue& v) { v.toMoment(); }},
};

const std::pair<FieldType, Write> writes[] = {
    {FieldType::Int32, [](FieldValue& v) { v.setInt32(1); }},
    {FieldType::Int64, [](FieldValue& v) { v.setInt64(1); }},
    {FieldType::Double, [](FieldValue& v) { v.setDouble(1.0); }},
    {FieldType::Decimal, [](FieldValue& v) { v.setDecimal(decimal::maximum); }},
    {FieldType::Text, [](FieldValue& v) { v.setText(QStringLiteral("other")); }},
    {FieldType::Moment, [](FieldValue& v) { v.setMoment(1); }},
};

}

class tst_field : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void typedValues();
    void readsOfOtherTypesThrow();
    void writesOfOtherTypesThrow();
    void nullField();
    void noField();
    void variantRoundTrip();
    void variantOfOtherTypeThrows();
    void neighboursInMaskStay();
    void viewTellsItsPlace();
    void toString_data();
    void toString();
    void toChar_data();
    void toChar();
};

void tst_field::typedValues()
{
    Cell int32(FieldType::Int32);
    int32.view().setInt32(std::numeric_limits<qint32>::min());
    QCOMPARE(int32.view().toInt32(), std::numeric_limits<qint32>::min());
    Cell int64(FieldType::Int64);
    int64.view().setInt64(std::numeric_limits<qint64>::max());
    QCOMPARE(int64.view().toInt64(), std::numeric_limits<qint64>::max());
    Cell real(FieldType::Double);
    real.view().setDouble(-0.0);
    QVERIFY(real.view().toDouble() == 0.0 && std::signbit(real.view().toDouble()));
    Cell number(FieldType::Decimal);
    number.view().setDecimal(decimal::minimum);
    QVERIFY(number.view().toDecimal() == decimal::minimum);
    Cell text(FieldType::Text);
    text.view().setText(QStringLiteral("a"));
    QCOMPARE(text.view().toText(), QStringLiteral("a"));
    Cell moment(FieldType::Moment);
    moment.view().setMoment(-1);
    QCOMPARE(moment.view().toMoment(), qint64(-1));
}

void tst_field::readsOfOtherTypesThrow()
{
    for (const FieldType type : allTypes) {
        Cell cell(type);
        cell.view().setVariant(sample(type));
        for (const auto& [readType, read] : reads)
            QCOMPARE(textOfException([&cell, &reader = read] { reader(cell.view()); }),
                readType == type ? QString() : wrongType);
    }
}

void tst_field::writesOfOtherTypesThrow()
{
    for (const FieldType type : allTypes) {
        for (const auto& [writeType, write] : writes) {
            if (writeType == type)
                continue;
            Cell cell(type);
            FieldValue view = cell.view();
            QCOMPARE(textOfException([&view, &writer = write] { writer(view); }), wrongType);
            QVERIFY(view.isNull());
            view.setVariant(sample(type));
            QCOMPARE(textOfException([&view, &writer = write] { writer(view); }), wrongType);
            QCOMPARE(view.toVariant(), sample(type));
        }
    }
}

void tst_field::nullField()
{
    for (const FieldType type : allTypes) {
        Cell cell(type);
        QVERIFY(cell.view().isValid());
        QVERIFY(cell.view().isNull());
        QVERIFY(!cell.view().toVariant().isValid());
        for (const auto& [readType, read] : reads)
            QCOMPARE(textOfException([&cell, &reader = read] { reader(cell.view()); }), wrongType);
        cell.view().setVariant(sample(type));
        QVERIFY(!cell.view().isNull());
        cell.view().setNull();
        QVERIFY(cell.view().isNull());
        cell.view().setVariant(sample(type));
        cell.view().setVariant(QVariant());
        QVERIFY(cell.view().isNull());
    }
}

void tst_field::noField()
{
    FieldValue none;
    QVERIFY(!none.isValid());
    QVERIFY(none.isNull());
    QVERIFY(!none.toVariant().isValid());
    for (const auto& [type, read] : reads)
        QCOMPARE(textOfException([&none, &reader = read] { reader(none); }), wrongType);
    for (const auto& [type, write] : writes)
        QCOMPARE(textOfException([&none, &writer = write] { writer(none); }), wrongType);
    QCOMPARE(textOfException([&] { none.setNull(); }), wrongType);
    QCOMPARE(textOfException([&] { none.setVariant(1); }), wrongType);
    QCOMPARE(textOfException([&] { none.setVariant(QVariant()); }), wrongType);
    QVERIFY(Field().isNull());
    QCOMPARE(Field().toString(), QString());
    QCOMPARE(Field().toChar(), '\0');
}

void tst_field::variantRoundTrip()
{
    const int metaTypes[] = {QMetaType::Int, QMetaType::LongLong, QMetaType::Double, qMetaTypeId<decimal>(),
        QMetaType::QString, QMetaType::LongLong};
    int position = 0;
    for (const FieldType type : allTypes) {
        Cell cell(type);
        cell.view().setVariant(sample(type));
        QCOMPARE(cell.view().toVariant(), sample(type));
        QCOMPARE(cell.view().toVariant().userType(), metaTypes[position++]);
    }
}

void tst_field::variantOfOtherTypeThrows()
{
    const QVariant values[] = {QVariant(1), QVariant(1LL), QVariant(1.0), QVariant::fromValue(decimal()),
        QVariant(QStringLiteral("1")), QVariant(true), QVariant(1U), QVariant(QByteArray("1"))};
    for (const FieldType type : allTypes) {
        for (const QVariant& value : values) {
            if (value.userType() == sample(type).userType())
                continue;
            Cell cell(type);
            cell.view().setVariant(sample(type));
            QCOMPARE(textOfException([&] { cell.view().setVariant(value); }), wrongType);
            QCOMPARE(cell.view().toVariant(), sample(type));
        }
    }
}

void tst_field::neighboursInMaskStay()
{
    Cell cell(FieldType::Int32);
    cell.view().setInt32(5);
    QCOMPARE(int(cell.mask()), 0xa5);
    cell.view().setNull();
    QCOMPARE(int(cell.mask()), 0xa1);
}

void tst_field::viewTellsItsPlace()
{
    const unsigned char mask = 8;
    const unsigned char bytes[4] = {};
    const FieldConstValue view(FieldType::Int32, bytes, &mask, 8);
    QCOMPARE(view.type(), FieldType::Int32);
    QVERIFY(view.value() == bytes && view.maskByte() == &mask);
    QCOMPARE(int(view.maskBit()), 8);
    QVERIFY(!view.isNull());
    QVERIFY(FieldConstValue(FieldType::Int32, bytes, &mask, 16).isNull());
    QCOMPARE(Field(view).value().toInt32(), 0);
    QCOMPARE(int(FieldType::Int32), 1);
    QCOMPARE(int(FieldType::Moment), 6);
}

void tst_field::toString_data()
{
    QTest::addColumn<FieldType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("int") << FieldType::Int32 << QVariant(-1234567) << "-1234567";
    QTest::newRow("64 bits") << FieldType::Int64 << QVariant(1234567890123LL) << "1234567890123";
    QTest::newRow("double") << FieldType::Double << QVariant(-1.5) << "-1.5";
    QTest::newRow("shortest double") << FieldType::Double << QVariant(0.1) << "0.1";
    QTest::newRow("not a number") << FieldType::Double << QVariant(std::nan("")) << "nan";
    QTest::newRow("decimal") << FieldType::Decimal << QVariant::fromValue(decimal::fromUnits(-5, 3))
                             << "-0.005";
    QTest::newRow("text") << FieldType::Text << QVariant(QStringLiteral(" a b ")) << " a b ";
    QTest::newRow("epoch") << FieldType::Moment << QVariant(0LL) << "1970.01.01 00:00:00.000";
    QTest::newRow("moment") << FieldType::Moment << QVariant(1704067199999LL) << "2023.12.31 23:59:59.999";
    QTest::newRow("null") << FieldType::Moment << QVariant() << "";
}

void tst_field::toString()
{
    QFETCH(FieldType, type);
    QFETCH(QVariant, value);
    QFETCH(QString, expected);
    Cell cell(type);
    cell.view().setVariant(value);
    QCOMPARE(Field(cell.view()).toString(), expected);
    QCOMPARE(Field(cell.view()).isNull(), !value.isValid());
}

void tst_field::toChar_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<char>("expected");

    QTest::newRow("letter") << QVariant(QStringLiteral("F")) << 'F';
    QTest::newRow("first of several") << QVariant(QStringLiteral("Option")) << 'O';
    QTest::newRow("Latin-1") << QVariant(QString(QChar(0xe4))) << '\xe4';
    QTest::newRow("outside Latin-1") << QVariant(QString(QChar(0x0424))) << '\0';
    QTest::newRow("empty") << QVariant(QStringLiteral("")) << '\0';
    QTest::newRow("null") << QVariant() << '\0';
}

void tst_field::toChar()
{
    QFETCH(QVariant, value);
    QFETCH(char, expected);
    Cell cell(FieldType::Text);
    cell.view().setVariant(value);
    QCOMPARE(Field(cell.view()).toChar(), expected);
    Cell number(FieldType::Int32);
    number.view().setInt32(-3);
    QCOMPARE(Field(number.view()).toChar(), '-');
}

PLOT2D_TEST_MAIN(tst_field)
#include "tst_field.moc"
