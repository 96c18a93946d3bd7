#include "support/testmain.h"

#include <window/commandline.h>

Q_DECLARE_METATYPE(CommandLine)

/// What the command line is read as, and what is said of one that cannot be read.
class tst_commandline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void defaults();
    void readsEveryOption();
    void takesAChainWithoutAnOption();
    void readsDates_data();
    void readsDates();
    void readsSizes_data();
    void readsSizes();
    void readsReplays_data();
    void readsReplays();
    void readsExports();
    void refusesInOneLine_data();
    void refusesInOneLine();
    void printsHelpAndVersion();
};

namespace {

ParsedCommandLine parsed(const QStringList& arguments)
{
    return parseCommandLine(QStringList{QStringLiteral("optiondesk")} + arguments);
}

}

void tst_commandline::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("optiondesk"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
}

void tst_commandline::defaults()
{
    const ParsedCommandLine line = parsed({});
    QCOMPARE(line.action, ParsedCommandLine::Action::Run);
    QVERIFY(line.options.chainFile.isEmpty());
    QVERIFY(!line.options.forward);
    QVERIFY(!line.options.asOf.isValid());
    QVERIFY(!line.options.expiry.isValid());
    QCOMPARE(line.options.view, DeskView::Volatility);
    QVERIFY(line.options.axisMode == AxisMode::Price);
    QVERIFY(line.options.database.isEmpty());
    QVERIFY(line.options.pictureFile.isEmpty());
    QVERIFY(line.options.replayFile.isEmpty());
    QCOMPARE(line.options.replaySpeed.value_or(0.0), 1.0);
    QCOMPARE(line.options.size, QSize(1000, 640));
    QVERIFY(line.options.settingsFile.isEmpty());
    QVERIFY(line.options.usesSettings);
    QVERIFY(line.options.positionsFile.isEmpty());
    QVERIFY(line.options.smileModel == Pricing::SmileModel::Spline);
}

void tst_commandline::readsEveryOption()
{
    const ParsedCommandLine line = parsed({"--chain", "a b.csv", "--forward", "92.85", "--asof", "2012-10-01",
        "--expiry=20121114", "--view", "value", "--axis", "percent", "--database", "d.sqlite", "--picture",
        "p.jpg", "--size", "200x10000", "--settings", "s.ini", "--positions", "p.json", "--smile", "svi"});
    QCOMPARE(line.action, ParsedCommandLine::Action::Run);
    QCOMPARE(line.options.chainFile, QStringLiteral("a b.csv"));
    QCOMPARE(line.options.forward.value_or(0.0), 92.85);
    QCOMPARE(line.options.asOf, QDate(2012, 10, 1));
    QCOMPARE(line.options.expiry, QDate(2012, 11, 14));
    QCOMPARE(line.options.view, DeskView::Value);
    QVERIFY(line.options.axisMode == AxisMode::PercentOfQuote);
    QCOMPARE(line.options.database, QStringLiteral("d.sqlite"));
    QCOMPARE(line.options.pictureFile, QStringLiteral("p.jpg"));
    QCOMPARE(line.options.size, QSize(200, 10000));
    QCOMPARE(line.options.settingsFile, QStringLiteral("s.ini"));
    QVERIFY(line.options.usesSettings);
    QCOMPARE(line.options.positionsFile, QStringLiteral("p.json"));
    QVERIFY(line.options.smileModel == Pricing::SmileModel::Svi);
    QVERIFY(!parsed({"--no-settings"}).options.usesSettings);
    QCOMPARE(parsed({"--view", "position"}).options.view, DeskView::Position);
    QVERIFY(parsed({"--axis", "deviations"}).options.axisMode == AxisMode::Deviations);
}

void tst_commandline::takesAChainWithoutAnOption()
{
    QCOMPARE(parsed({"a b.csv"}).options.chainFile, QStringLiteral("a b.csv"));
    QCOMPARE(parsed({"--view", "value", "c.csv"}).options.chainFile, QStringLiteral("c.csv"));
    for (const QStringList& surplus :
        {QStringList{"a.csv", "b.csv"}, QStringList{"--chain", "a.csv", "b.csv"}, QStringList{""}}) {
        const ParsedCommandLine line = parsed(surplus);
        QCOMPARE(line.action, ParsedCommandLine::Action::Fail);
        QVERIFY2(line.text.contains(QStringLiteral("unexpected argument")), qPrintable(line.text));
    }
}

void tst_commandline::readsDates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("dashes") << "2024-02-29" << QDate(2024, 2, 29);
    QTest::newRow("digits") << "20240229" << QDate(2024, 2, 29);
    QTest::newRow("no leap year") << "2023-02-29" << QDate();
    QTest::newRow("month 13") << "20241301" << QDate();
    QTest::newRow("one dash") << "2024-0229" << QDate();
    QTest::newRow("other dash") << "202402-29" << QDate();
    QTest::newRow("short year") << "24-02-29" << QDate();
    QTest::newRow("blank") << " 2024-02-29" << QDate();
    QTest::newRow("line end") << "2024-02-29\n" << QDate();
    QTest::newRow("slashes") << "2024/02/29" << QDate();
    QTest::newRow("empty") << "" << QDate();
    QTest::newRow("other digits") << QStringLiteral("\u0662\u0660\u0662\u0664\u0660\u0662\u0662\u0669")
                                  << QDate();
}

void tst_commandline::readsDates()
{
    QFETCH(QString, text);
    QFETCH(QDate, date);
    QCOMPARE(dateFromOption(text), date);
}

void tst_commandline::readsSizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest") << "200x150" << QSize(200, 150);
    QTest::newRow("largest") << "10000x10000" << QSize(10000, 10000);
    QTest::newRow("too narrow") << "199x150" << QSize();
    QTest::newRow("too low") << "200x149" << QSize();
    QTest::newRow("too wide") << "10001x150" << QSize();
    QTest::newRow("too high") << "200x10001" << QSize();
    QTest::newRow("overflow") << "99999999999x640" << QSize();
    QTest::newRow("negative") << "-1000x640" << QSize();
    QTest::newRow("one number") << "1000" << QSize();
    QTest::newRow("three numbers") << "1000x640x2" << QSize();
    QTest::newRow("blanks") << "1000 x 640" << QSize();
    QTest::newRow("empty") << "" << QSize();
}

void tst_commandline::readsSizes()
{
    QFETCH(QString, text);
    QFETCH(QSize, size);
    const ParsedCommandLine line = parsed({"--size", text});
    QCOMPARE(line.action, size.isValid() ? ParsedCommandLine::Action::Run : ParsedCommandLine::Action::Fail);
    if (size.isValid())
        QCOMPARE(line.options.size, size);
}

void tst_commandline::readsReplays_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<double>("speed");
    QTest::newRow("as recorded") << QStringList{} << 1.0;
    QTest::newRow("1") << QStringList{"--speed", "1"} << 1.0;
    QTest::newRow("10") << QStringList{"--speed", "10"} << 10.0;
    QTest::newRow("max") << QStringList{"--speed=max"} << -1.0;
}

void tst_commandline::readsReplays()
{
    QFETCH(QStringList, arguments);
    QFETCH(double, speed);
    const ParsedCommandLine line = parsed(QStringList{"--replay", "q.csv"} + arguments);
    QCOMPARE(line.action, ParsedCommandLine::Action::Run);
    QCOMPARE(line.options.replayFile, QStringLiteral("q.csv"));
    QCOMPARE(line.options.replaySpeed.value_or(-1.0), speed);
}

void tst_commandline::readsExports()
{
    const CommandLine none = parsed({}).options;
    QVERIFY(none.exportFiles.isEmpty());
    QCOMPARE(none.exportScale, 1);
    QVERIFY(!asksForFiles(none));
    QVERIFY(asksForFiles(parsed({"--picture", "p.png"}).options));

    const ParsedCommandLine line = parsed({"--export", "a.png", "--scale", "4", "--export=b.CSV"});
    QCOMPARE(line.action, ParsedCommandLine::Action::Run);
    QCOMPARE(line.options.exportFiles, (QStringList{"a.png", "b.CSV"}));
    QCOMPARE(line.options.exportScale, 4);
    QVERIFY(asksForFiles(line.options));
}

void tst_commandline::refusesInOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    const auto row = [](const char* name, const QStringList& arguments, const char* named) {
        QTest::newRow(name) << arguments << QString::fromLatin1(named);
    };
    row("unknown option", {"--colour", "red"}, "colour");
    row("abbreviated option", {"--pic", "p.png"}, "pic");
    row("missing value", {"--chain"}, "chain");
    row("empty chain", {"--chain", ""}, "--chain");
    row("empty database", {"--database", ""}, "--database");
    row("empty picture", {"--picture", ""}, "--picture");
    row("unknown format", {"--picture", "p.docx"}, "p.docx");
    row("forward zero", {"--forward", "0"}, "--forward");
    row("forward negative", {"--forward", "-92.85"}, "-92.85");
    row("forward no number", {"--forward", "92,85"}, "92,85");
    row("forward nan", {"--forward", "nan"}, "--forward");
    row("forward inf", {"--forward", "inf"}, "--forward");
    row("forward too small for the host", {"--forward", "1e-6"}, "1e-6");
    row("forward too large", {"--forward", "1e10"}, "1e10");
    row("as-of", {"--asof", "yesterday"}, "yesterday");
    row("expiry", {"--expiry", "2012-11-31"}, "2012-11-31");
    row("expiry not after as-of", {"--asof", "2012-10-01", "--expiry", "2012-10-01"}, "2012-10-01");
    row("view", {"--view", "Volatility"}, "Volatility");
    row("axis", {"--axis", "deviation"}, "deviations");
    row("smile", {"--smile", "svj"}, "spline, svi or sabr");
    row("empty positions", {"--positions", ""}, "--positions");
    row("size", {"--size", "big"}, "big");
    row("empty replay", {"--replay", ""}, "--replay");
    row("replay without value", {"--replay"}, "replay");
    row("replay into a picture", {"--replay", "q.csv", "--picture", "p.png"}, "--picture");
    row("replay into a file", {"--replay", "q.csv", "--export", "p.svg"}, "--export");
    row("empty export", {"--export", ""}, "--export");
    row("unknown export", {"--export", "p.jpg"}, "p.jpg");
    row("export without suffix", {"--export", "plot"}, "plot");
    row("second export unknown", {"--export", "p.png", "--export", "p.xls"}, "p.xls");
    row("scale alone", {"--scale", "2"}, "--export");
    row("scale zero", {"--export", "p.png", "--scale", "0"}, "--scale");
    row("scale too large", {"--export", "p.png", "--scale", "5"}, "--scale");
    row("scale no whole number", {"--export", "p.png", "--scale", "1.5"}, "1.5");
    row("speed alone", {"--speed", "10"}, "--replay");
    row("speed", {"--replay", "q.csv", "--speed", "fast"}, "fast");
    row("speed zero", {"--replay", "q.csv", "--speed", "0"}, "--speed");
    row("empty settings", {"--settings", ""}, "--settings");
    row("settings and none", {"--settings", "s.ini", "--no-settings"}, "--no-settings");
    row("speed negative", {"--replay", "q.csv", "--speed=-1"}, "-1");
}

void tst_commandline::refusesInOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const ParsedCommandLine line = parsed(arguments);
    QCOMPARE(line.action, ParsedCommandLine::Action::Fail);
    QVERIFY2(line.text.contains(named), qPrintable(line.text));
    QVERIFY2(!line.text.contains(QLatin1Char('\n')), qPrintable(line.text));
}

void tst_commandline::printsHelpAndVersion()
{
    const ParsedCommandLine version = parsed({"--version"});
    QCOMPARE(version.action, ParsedCommandLine::Action::PrintText);
    QCOMPARE(version.text, QStringLiteral("optiondesk 1.2.3\n"));

    const ParsedCommandLine help = parsed({"--help"});
    QCOMPARE(help.action, ParsedCommandLine::Action::PrintText);
    for (const char* option : {"--chain", "--forward", "--asof", "--expiry", "--view", "--database",
             "--picture", "--export", "--scale", "--size", "--replay", "--speed", "--settings",
             "--no-settings", "--positions", "--language", "--smile"})
        QVERIFY2(help.text.contains(QLatin1String(option)), option);
}

PLOT2D_TEST_MAIN(tst_commandline)
#include "tst_commandline.moc"
