#include "host/directory/tablerows.h"
#include "support/testmain.h"

#include <directory/optionalfield.h>

using namespace TestSupport;

class tst_OptionalField : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void noField();
};

void tst_OptionalField::reads_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("integer");
    QTest::addColumn<bool>("fixedPoint");
    QTest::addColumn<bool>("text");

    const auto row = [](const char* name, FieldType type, const QVariant& value, bool integer,
                         bool fixedPoint, bool text) {
        QTest::newRow(name) << static_cast<int>(type) << value << integer << fixedPoint << text;
    };
    row("32 bits", FieldType::Int32, -7, true, false, false);
    row("64 bits", FieldType::Int64, number64(Q_INT64_C(-9000000000)), true, false, false);
    row("double", FieldType::Double, 2.5, false, false, false);
    row("decimal", FieldType::Decimal, number("2.5"), false, true, false);
    row("text", FieldType::Text, QStringLiteral("7"), false, false, true);
    row("empty text", FieldType::Text, QStringLiteral(""), false, false, true);
    row("moment", FieldType::Moment, number64(7), false, false, false);
    row("null of 32 bits", FieldType::Int32, QVariant(), false, false, false);
    row("null of 64 bits", FieldType::Int64, QVariant(), false, false, false);
    row("null decimal", FieldType::Decimal, QVariant(), false, false, false);
    row("null text", FieldType::Text, QVariant(), false, false, false);
}

void tst_OptionalField::reads()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(bool, integer);
    QFETCH(bool, fixedPoint);
    QFETCH(bool, text);

    Table table(QStringLiteral("t"), {{QStringLiteral("value"), static_cast<FieldType>(type), 5}});
    const FieldConstValue field = appendRow(table, {{"value", value}}).value(0);

    const std::optional<qint64> asInteger = OptionalField::integer(field);
    QCOMPARE(asInteger.has_value(), integer);
    if (asInteger)
        QCOMPARE(*asInteger, value.toLongLong());
    const std::optional<decimal> asDecimal = OptionalField::fixedPoint(field);
    QCOMPARE(asDecimal.has_value(), fixedPoint);
    if (asDecimal)
        QVERIFY(*asDecimal == value.value<decimal>());
    const std::optional<QString> asText = OptionalField::text(field);
    QCOMPARE(asText.has_value(), text);
    if (asText)
        QCOMPARE(*asText, value.toString());
}

void tst_OptionalField::noField()
{
    QVERIFY(!OptionalField::integer(Record().value(0)));
    QVERIFY(!OptionalField::fixedPoint(FieldConstValue()));
    QVERIFY(!OptionalField::text(FieldConstValue()));
}

PLOT2D_TEST_MAIN(tst_OptionalField)
#include "tst_optionalfield.moc"
