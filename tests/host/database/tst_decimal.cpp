#include "database/decimal.h"
#include "randomdecimals.h"
#include "slowdecimal.h"
#include "support/testmain.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

const QString largestText = QStringLiteral("170141183460469231731.687303715884105727");

QString text(const SlowDecimal& value)
{
    return QString::fromStdString(SlowDecimals::toText(value));
}

double nearestDouble(const std::string& digits)
{
    double value = 0.0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

decimal fromStd(const std::string& digits)
{
    return decimal::fromString(QString::fromStdString(digits));
}

}

class tst_decimal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void constants();
    void fromDouble_data();
    void fromDouble();
    void fromDoubleOfNoNumber();
    void fromDoubleMatchesExactExpansion_data();
    void fromDoubleMatchesExactExpansion();
    void fromUnits_data();
    void fromUnits();
    void fromString_data();
    void fromString();
    void fromStringMatchesModel();
    void toDoubleIsNearest();
    void toDoubleOfDoublesText();
    void arithmeticMatchesModel_data();
    void arithmeticMatchesModel();
    void roundedMatchesModel();
    void negation();
    void saturation();
    void inVariants();
};

void tst_decimal::constants()
{
    QCOMPARE(decimal::zero.toString(), QStringLiteral("0"));
    QCOMPARE(decimal::maximum.toString(), largestText);
    QCOMPARE(decimal::minimum.toString(), QLatin1Char('-') + largestText);
    QVERIFY(decimal::zero.isZero());
    QVERIFY(decimal().isZero());
    QVERIFY(!decimal::fromUnits(1, 18).isZero());
    QVERIFY(!decimal::fromString(QStringLiteral("18446744073709551616")).isZero());
    QVERIFY(decimal::minimum < decimal::zero && decimal::zero < decimal::maximum);
}

void tst_decimal::fromDouble_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");

    QTest::newRow("just below the half") << 1.005 << 2 << "1";
    QTest::newRow("exact half") << 0.125 << 2 << "0.13";
    QTest::newRow("exact half, negative") << -0.125 << 2 << "-0.13";
    QTest::newRow("half to whole") << 2.5 << 0 << "3";
    QTest::newRow("largest below one half") << 0.49999999999999994 << 0 << "0";
    QTest::newRow("all decimals") << 0.1 << 18 << "0.100000000000000006";
    QTest::newRow("five decimals") << 107342.5 << 5 << "107342.5";
    QTest::newRow("negative decimals are none") << 12.7 << -3 << "13";
    QTest::newRow("too many decimals are eighteen") << 0.1 << 40 << "0.100000000000000006";
    QTest::newRow("minus zero") << -0.0 << 3 << "0";
    QTest::newRow("rounds to zero from below") << -0.0004 << 3 << "0";
    QTest::newRow("smallest denormal") << 4.9406564584124654e-324 << 18 << "0";
    QTest::newRow("2^63") << 9223372036854775808.0 << 18 << "9223372036854775808";
    QTest::newRow("-2^63") << -9223372036854775808.0 << 0 << "-9223372036854775808";
    QTest::newRow("2^67") << std::ldexp(1.0, 67) << 4 << "147573952589676412928";
    QTest::newRow("1e20") << 1e20 << 18 << "100000000000000000000";
    QTest::newRow("1.7e20 is in range") << 1.7e20 << 18 << "170000000000000000000";
    QTest::newRow("1.8e20 saturates") << 1.8e20 << 18 << largestText;
    QTest::newRow("2e20 saturates") << 2e20 << 18 << largestText;
    QTest::newRow("1e300 saturates") << 1e300 << 2 << largestText;
    QTest::newRow("-1e300 saturates") << -1e300 << 2 << QString(QLatin1Char('-') + largestText);
    QTest::newRow("2^53 - 1") << 9007199254740991.0 << 18 << "9007199254740991";
    QTest::newRow("2^53 + 2") << 9007199254740994.0 << 18 << "9007199254740994";
    QTest::newRow("half of 2^53") << 4503599627370495.5 << 0 << "4503599627370496";
}

void tst_decimal::fromDouble()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(QString, expected);
    QCOMPARE(decimal::fromDouble(value, static_cast<short>(decimals)).toString(), expected);
}

void tst_decimal::fromDoubleOfNoNumber()
{
    const double infinity = std::numeric_limits<double>::infinity();
    QVERIFY(decimal::fromDouble(infinity, 2).isZero());
    QVERIFY(decimal::fromDouble(-infinity, 2).isZero());
    QVERIFY(decimal::fromDouble(std::numeric_limits<double>::quiet_NaN(), 2).isZero());
}

void tst_decimal::fromDoubleMatchesExactExpansion_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 1; seed <= 3; ++seed)
        QTest::addRow("seed %d", int(seed)) << seed;
}

void tst_decimal::fromDoubleMatchesExactExpansion()
{
    QFETCH(quint64, seed);
    Doubles doubles(seed);
    for (int i = 0; i < 60000; ++i) {
        const double value = doubles.next();
        const short decimals = static_cast<short>(i % 19);
        const QString expected = text(SlowDecimals::fromDouble(value, decimals));
        const QString actual = decimal::fromDouble(value, decimals).toString();
        QVERIFY2(actual == expected,
            qPrintable(QStringLiteral("case %1: %2 to %3 decimals gives %4, not %5")
                           .arg(i)
                           .arg(value, 0, 'g', 17)
                           .arg(decimals)
                           .arg(actual, expected)));
    }
}

void tst_decimal::fromUnits_data()
{
    QTest::addColumn<qint64>("count");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");

    QTest::newRow("whole") << qint64(42) << 0 << "42";
    QTest::newRow("hundredths") << qint64(-1250) << 2 << "-12.5";
    QTest::newRow("smallest unit") << qint64(1) << 18 << "0.000000000000000001";
    QTest::newRow("negative decimals are none") << qint64(7) << -1 << "7";
    QTest::newRow("too many decimals are eighteen") << qint64(7) << 19 << "0.000000000000000007";
    QTest::newRow("largest") << std::numeric_limits<qint64>::max() << 0 << "9223372036854775807";
    QTest::newRow("smallest") << std::numeric_limits<qint64>::min() << 0 << "-9223372036854775808";
    QTest::newRow("smallest, finest") << std::numeric_limits<qint64>::min() << 18 << "-9.223372036854775808";
}

void tst_decimal::fromUnits()
{
    QFETCH(qint64, count);
    QFETCH(int, decimals);
    QFETCH(QString, expected);
    QCOMPARE(decimal::fromUnits(count, static_cast<short>(decimals)).toString(), expected);
}

void tst_decimal::fromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("expected");

    const auto good = [](const char* text, const QString& expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << true << expected;
    };
    const auto bad = [](const char* name, const QString& text) {
        QTest::newRow(name) << text << false << QStringLiteral("0");
    };
    good("-12.5", QStringLiteral("-12.5"));
    good("+3", QStringLiteral("3"));
    good("000.100", QStringLiteral("0.1"));
    good("-0", QStringLiteral("0"));
    good("0.0000000000000000005", QStringLiteral("0.000000000000000001"));
    good("-0.0000000000000000005", QStringLiteral("-0.000000000000000001"));
    good("0.00000000000000000049999999999999999999", QStringLiteral("0"));
    good("0.9999999999999999995", QStringLiteral("1"));
    good("170141183460469231731.687303715884105727", largestText);
    good("170141183460469231731.6873037158841057274", largestText);
    good("170141183460469231732", largestText);
    good("99999999999999999999999999999999999999999999.9", largestText);
    good("-99999999999999999999999999999999999999999999.9", QLatin1Char('-') + largestText);
    bad("empty", QString());
    bad("a sign alone", QStringLiteral("-"));
    bad("two signs", QStringLiteral("--1"));
    bad("no digit before the point", QStringLiteral(".5"));
    bad("no digit behind the point", QStringLiteral("5."));
    bad("two points", QStringLiteral("1.2.3"));
    bad("a comma", QStringLiteral("1,5"));
    bad("a blank before", QStringLiteral(" 1"));
    bad("a blank behind", QStringLiteral("1 "));
    bad("an exponent", QStringLiteral("1e3"));
    bad("letters", QStringLiteral("nan"));
    bad("digits of another script", QString(QChar(0x0661)));
    bad("a zero character", QString(QChar(u'1')) + QChar(u'\0'));
}

void tst_decimal::fromString()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(QString, expected);
    bool ok = !valid;
    QCOMPARE(decimal::fromString(text, &ok).toString(), expected);
    QCOMPARE(ok, valid);
    QCOMPARE(decimal::fromString(text).toString(), expected);
}

void tst_decimal::fromStringMatchesModel()
{
    constexpr quint64 seed = 11;
    Texts texts(seed);
    for (int i = 0; i < 60000; ++i) {
        const std::string digits = texts.next();
        const QString expected = text(SlowDecimals::fromText(digits));
        const QString actual = fromStd(digits).toString();
        QVERIFY2(actual == expected, digits.c_str());
    }
}

void tst_decimal::toDoubleIsNearest()
{
    constexpr quint64 seed = 12;
    Texts texts(seed);
    for (int i = 0; i < 100000; ++i) {
        const SlowDecimal model = SlowDecimals::fromText(texts.next());
        const std::string digits = SlowDecimals::toText(model);
        const double actual = fromStd(digits).toDouble();
        const double expected = nearestDouble(digits);
        QVERIFY2(bitsOf(actual) == bitsOf(expected), digits.c_str());
    }
}

void tst_decimal::toDoubleOfDoublesText()
{
    // What a double of up to 15 digits was written with comes back as that double.
    std::mt19937_64 engine(13);
    for (int i = 0; i < 20000; ++i) {
        const qint64 count = qint64(engine() % 2000000000000000ULL) - 1000000000000000LL;
        const double value = double(count) / 1e5;
        QCOMPARE(decimal::fromDouble(value, 5).toDouble(), value);
    }
    QCOMPARE(bitsOf(decimal::zero.toDouble()), bitsOf(0.0));
    QCOMPARE(decimal::maximum.toDouble(), 170141183460469231731.687303715884105727);
    QCOMPARE(decimal::minimum.toDouble(), -170141183460469231731.687303715884105727);
}

void tst_decimal::arithmeticMatchesModel_data()
{
    QTest::addColumn<quint64>("seed");
    for (quint64 seed = 21; seed <= 23; ++seed)
        QTest::addRow("seed %d", int(seed)) << seed;
}

void tst_decimal::arithmeticMatchesModel()
{
    QFETCH(quint64, seed);
    Texts texts(seed);
    for (int i = 0; i < 30000; ++i) {
        const std::string left = texts.next();
        const std::string right = texts.next();
        const SlowDecimal modelA = SlowDecimals::fromText(left);
        const SlowDecimal modelB = SlowDecimals::fromText(right);
        const SlowDecimal minusB{!modelB.negative && modelB.digits != "0", modelB.digits};
        const decimal a = fromStd(left);
        const decimal b = fromStd(right);
        const QByteArray label = QByteArray::fromStdString(left + " and " + right);
        QVERIFY2((a + b).toString() == text(SlowDecimals::sum(modelA, modelB)), label);
        QVERIFY2((a - b).toString() == text(SlowDecimals::sum(modelA, minusB)), label);
        QVERIFY2((a * b).toString() == text(SlowDecimals::product(modelA, modelB)), label);
        const int order = SlowDecimals::compare(modelA, modelB);
        QVERIFY2((a.compare(b) > 0) - (a.compare(b) < 0) == order, label);
        QVERIFY2((a < b) == (order < 0) && (a > b) == (order > 0) && (a == b) == (order == 0), label);
        QVERIFY2((a <= b) == (order <= 0) && (a >= b) == (order >= 0) && (a != b) == (order != 0), label);
    }
}

void tst_decimal::roundedMatchesModel()
{
    constexpr quint64 seed = 31;
    Texts texts(seed);
    for (int i = 0; i < 60000; ++i) {
        const std::string digits = texts.next();
        const short decimals = static_cast<short>(i % 23 - 2);
        const SlowDecimal expected
            = SlowDecimals::rounded(SlowDecimals::fromText(digits), std::clamp<int>(decimals, 0, 18));
        QVERIFY2(fromStd(digits).rounded(decimals).toString() == text(expected), digits.c_str());
    }
}

void tst_decimal::negation()
{
    QCOMPARE((-decimal::maximum).toString(), decimal::minimum.toString());
    QCOMPARE((-decimal::minimum).toString(), decimal::maximum.toString());
    QCOMPARE((-decimal::zero).toString(), QStringLiteral("0"));
    QCOMPARE((-decimal::fromUnits(-5, 1)).toString(), QStringLiteral("0.5"));
}

void tst_decimal::saturation()
{
    const decimal unit = decimal::fromUnits(1, 18);
    QVERIFY(decimal::maximum + unit == decimal::maximum);
    QVERIFY(decimal::minimum - unit == decimal::minimum);
    QVERIFY(decimal::maximum - decimal::minimum == decimal::maximum);
    QVERIFY(decimal::minimum + decimal::minimum == decimal::minimum);
    QVERIFY(decimal::maximum * decimal::maximum == decimal::maximum);
    QVERIFY(decimal::maximum * decimal::minimum == decimal::minimum);
    QVERIFY(decimal::maximum * decimal::fromUnits(1, 0) == decimal::maximum);
    QVERIFY(decimal::minimum * decimal::fromUnits(1, 0) == decimal::minimum);
    QVERIFY(decimal::maximum.rounded(0) == decimal::maximum);
    QVERIFY(decimal::minimum.rounded(0) == decimal::minimum);
}

void tst_decimal::inVariants()
{
    const QVariant one = QVariant::fromValue(decimal::fromUnits(10, 1));
    QVERIFY(one == QVariant::fromValue(decimal::fromUnits(1, 0)));
    QVERIFY(one != QVariant::fromValue(decimal::fromUnits(2, 0)));
}

PLOT2D_TEST_MAIN(tst_decimal)
#include "tst_decimal.moc"
