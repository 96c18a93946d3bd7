#include "plot2d/plot2dcommon.h"
#include "support/childrun.h"
#include "support/numbersamples.h"
#include "support/qtversions.h"
#include "support/slownumbers.h"
#include "support/testmain.h"

#include <QLocale>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The system's locale is read from the environment once, when a program starts.
QProcessEnvironment environmentWithoutLocale()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names) {
        if (name.startsWith(QLatin1String("LC_")) || name.startsWith(QLatin1String("LANG")))
            environment.remove(name);
    }
    return environment;
}

/// The environment of a locale such as "de_DE".
QProcessEnvironment environmentOf(const QString& locale)
{
    QProcessEnvironment environment = environmentWithoutLocale();
    environment.insert(QStringLiteral("LC_ALL"), locale + QLatin1String(".UTF-8"));
    return environment;
}

void localeRows()
{
    QTest::addColumn<QString>("locale");
    for (const char* locale : {"C", "de_DE", "fr_CH", "hi_IN", "ar_EG"})
        QTest::newRow(locale) << QString::fromLatin1(locale);
}

/// A text of a locale that has no signs of its own: "-1,234.5".
QString localized(const char* plain, const QString& point, const QString& group, char16_t zero)
{
    QString text;
    for (const char* sign = plain; *sign != '\0'; ++sign) {
        if (*sign == '.')
            text += point;
        else if (*sign == ',')
            text += group;
        else if (*sign >= '0' && *sign <= '9')
            text += QChar(static_cast<ushort>(zero + (*sign - '0')));
        else
            text += QLatin1Char(*sign);
    }
    return text;
}

/// The plain text in the signs that the data of Qt 5.15 has for a locale.
QString inSignsOf(const QString& locale, const char* plain)
{
    if (locale == QLatin1String("de_DE"))
        return localized(plain, QStringLiteral(","), QStringLiteral("."), u'0');
    if (locale == QLatin1String("fr_CH"))
        return localized(plain, QStringLiteral(","), QStringLiteral("\u202f"), u'0');
    if (locale == QLatin1String("ar_EG"))
        return localized(plain, QStringLiteral("\u066b"), QStringLiteral("\u066c"), u'\u0660');
    // Groups of three in hi_IN too, where its readers would expect 12,34,567.
    return localized(plain, QStringLiteral("."), QStringLiteral(","), u'0');
}

struct Golden {
    double value;
    int decimals;
    const char* text; ///< "," between groups, "." before the fraction
};

constexpr Golden goldenTable[] = {
    {2.0, 4, "2"},
    {2.5, 2, "2.5"},
    {2.5, 0, "3"},
    {0.125, 2, "0.13"},
    {0.0, 2, "0"},
    {-0.0, 2, "0"},
    {-0.0001, 3, "-0"},
    {-0.3, 0, "-0"},
    {100.0, 0, "100"},
    {100.0, 2, "100"},
    {999.996, 2, "1,000"},
    {1000.0, 0, "1,000"},
    {-1234.5, 4, "-1,234.5"},
    {1234567.891, 3, "1,234,567.891"},
    {1020304.0506, 6, "1,020,304.0506"},
    {100000000.0, 2, "100,000,000"},
    {0.0000000001, 10, "0.0000000001"},
    {0.00048828125, 11, "0.0004882813"},
    {0.1, std::numeric_limits<int>::max(), "0.1"},
    {std::numeric_limits<double>::quiet_NaN(), 2, "nan"},
    {infinity, 2, "inf"},
    {-infinity, 2, "-inf"},
};

}

/// Every row runs in a child process that has the row's locale for its system's locale.
class tst_Plot2dCommonLocales : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void signsOfTheLocale_data();
    void signsOfTheLocale();
    void goldenTexts_data() { localeRows(); }
    void goldenTexts();
    void negativeDecimalsAreNone_data() { localeRows(); }
    void negativeDecimalsAreNone();
    void randomTexts_data() { localeRows(); }
    void randomTexts();
    void formattedValueHasNoLocale_data() { localeRows(); }
    void formattedValueHasNoLocale();
    void defaultLocaleIsNotTheSystems_data() { localeRows(); }
    void defaultLocaleIsNotTheSystems();
    void variablesOfTheEnvironment_data();
    void variablesOfTheEnvironment();
};

#define SKIP_OTHER_SIGNS(locale)                                                                             \
    if (const char* other = TestVersions::otherSignsOf(locale))                                              \
        QSKIP(other);

#define RUN_IN_CHILD(environment)                                                                            \
    if (!TestSupport::isChild()) {                                                                           \
        const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);                        \
        QVERIFY2(run.passed(), run.output);                                                                  \
        return;                                                                                              \
    }

void tst_Plot2dCommonLocales::signsOfTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("expected");

    QTest::newRow("C") << "C"
                       << "-1,234,567.25";
    QTest::newRow("de_DE") << "de_DE"
                           << "-1.234.567,25";
    QTest::newRow("fr_CH") << "fr_CH"
                           << "-1\u202f234\u202f567,25";
    QTest::newRow("hi_IN") << "hi_IN"
                           << "-1,234,567.25";
    QTest::newRow("ar_EG") << "ar_EG"
                           << "-\u0661\u066c\u0662\u0663\u0664\u066c\u0665\u0666\u0667\u066b\u0662\u0665";
}

void tst_Plot2dCommonLocales::signsOfTheLocale()
{
    QFETCH(QString, locale);
    SKIP_OTHER_SIGNS(locale)
    RUN_IN_CHILD(environmentOf(locale))

    QCOMPARE(QLocale::system().name(), locale);
    QTEST(Plot2dCommon::fromDoubleToSystemStringShort(-1234567.25, 4), "expected");
}

void tst_Plot2dCommonLocales::goldenTexts()
{
    QFETCH(QString, locale);
    SKIP_OTHER_SIGNS(locale)
    RUN_IN_CHILD(environmentOf(locale))

    QStringList texts;
    QStringList expected;
    for (const Golden& golden : goldenTable) {
        texts << Plot2dCommon::fromDoubleToSystemStringShort(golden.value, golden.decimals);
        expected << inSignsOf(locale, golden.text);
    }
    QCOMPARE(texts, expected);
}

void tst_Plot2dCommonLocales::negativeDecimalsAreNone()
{
    QFETCH(QString, locale);
    RUN_IN_CHILD(environmentOf(locale))

    QCOMPARE(Plot2dCommon::fromDoubleToSystemStringShort(5.0, -3), inSignsOf(locale, "5"));
    QCOMPARE(Plot2dCommon::fromDoubleToSystemStringShort(5.5, -1), inSignsOf(locale, "6"));
    QCOMPARE(Plot2dCommon::fromDoubleToSystemStringShort(10.4, std::numeric_limits<int>::min()),
        inSignsOf(locale, "10"));
}

void tst_Plot2dCommonLocales::randomTexts()
{
    QFETCH(QString, locale);
    SKIP_OTHER_SIGNS(locale)
    RUN_IN_CHILD(environmentOf(locale))

    constexpr std::uint64_t seed = 501;
    NumberSamples samples(seed);
    for (int i = 0; i < 200000; ++i) {
        const NumberCase c = samples.next();
        const QString text = Plot2dCommon::fromDoubleToSystemStringShort(c.value, c.decimals);
        const QString expected = SlowNumbers::systemText(c.value, c.decimals);
        if (text != expected)
            QFAIL("seed 501, case " + QByteArray::number(i) + ": " + inFull(c.value) + " to "
                + QByteArray::number(c.decimals) + " decimals: " + text.toUtf8() + " instead of "
                + expected.toUtf8());
    }
}

void tst_Plot2dCommonLocales::formattedValueHasNoLocale()
{
    QFETCH(QString, locale);
    RUN_IN_CHILD(environmentOf(locale))

    QLocale::setDefault(QLocale::system());
    QCOMPARE(Plot2dCommon::formattedValue(-1234567.25, 4), QStringLiteral("-1234567.25"));
    QCOMPARE(Plot2dCommon::formattedValue(1000.0, 2), QStringLiteral("1000"));
}

void tst_Plot2dCommonLocales::defaultLocaleIsNotTheSystems()
{
    QFETCH(QString, locale);
    RUN_IN_CHILD(environmentOf(locale))

    const QString other
        = locale == QLatin1String("de_DE") ? QStringLiteral("ar_EG") : QStringLiteral("de_DE");
    QLocale::setDefault(QLocale(other));
    QCOMPARE(Plot2dCommon::fromDoubleToSystemStringShort(1234.5, 2), inSignsOf(locale, "1,234.5"));
}

void tst_Plot2dCommonLocales::variablesOfTheEnvironment_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QString>("locale");

    QTest::newRow("nothing set") << QStringList() << "C";
    QTest::newRow("LANG") << QStringList{"LANG=de_DE.UTF-8"} << "de_DE";
    QTest::newRow("LC_NUMERIC before LANG")
        << QStringList{"LANG=ar_EG.UTF-8", "LC_NUMERIC=fr_CH.UTF-8"} << "fr_CH";
    QTest::newRow("LC_ALL before LC_NUMERIC")
        << QStringList{"LC_NUMERIC=fr_CH.UTF-8", "LC_ALL=ar_EG.UTF-8"} << "ar_EG";
    QTest::newRow("LANGUAGE is for texts") << QStringList{"LANG=de_DE.UTF-8", "LANGUAGE=ar_EG"} << "de_DE";
}

void tst_Plot2dCommonLocales::variablesOfTheEnvironment()
{
    QFETCH(QStringList, variables);
    QFETCH(QString, locale);
    QProcessEnvironment environment = environmentWithoutLocale();
    for (const QString& variable : qAsConst(variables))
        environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    RUN_IN_CHILD(environment)

    QCOMPARE(Plot2dCommon::fromDoubleToSystemStringShort(1020.30, 2), inSignsOf(locale, "1,020.3"));
}

PLOT2D_TEST_MAIN(tst_Plot2dCommonLocales)

#include "tst_plot2dcommon_locales.moc"
