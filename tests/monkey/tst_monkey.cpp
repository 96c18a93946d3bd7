#include "monkey/lastwords.h"
#include "monkey/monkeycommand.h"
#include "monkey/monkeyrun.h"
#include "support/testmain.h"

/// 100,000 random steps, and that they are worth their time. More of them by hand: see monkeycommand.h.
class tst_monkey : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void invariantsHold_data();
    void invariantsHold();
    void repeatsItself();
};

void tst_monkey::initTestCase()
{
    Monkey::LastWords::install();
}

void tst_monkey::invariantsHold_data()
{
    QTest::addColumn<quint64>("seed");
    for (const quint64 seed : {1u, 2u, 3u, 4u})
        QTest::addRow("seed %llu", static_cast<unsigned long long>(seed)) << seed;
}

void tst_monkey::invariantsHold()
{
    constexpr int steps = 25000;
    QFETCH(quint64, seed);
    Monkey::Run run(seed);
    const QString broken = run.play(0, steps);
    QVERIFY2(broken.isEmpty(), qPrintable(broken));
    // A monkey whose events go astray finds nothing.
    const Monkey::Tally& tally = run.tally();
    QCOMPARE(tally.steps, steps);
    QVERIFY2(tally.pans > 40, qPrintable(QString::number(tally.pans)));
    QVERIFY2(tally.zooms > 500, qPrintable(QString::number(tally.zooms)));
    QVERIFY2(tally.axisDrags > 500, qPrintable(QString::number(tally.axisDrags)));
    QVERIFY2(tally.thinnedLabels > 500, qPrintable(QString::number(tally.thinnedLabels)));
    QVERIFY2(tally.intervals > 20, qPrintable(QString::number(tally.intervals)));
    QVERIFY2(tally.interventions > 20, qPrintable(QString::number(tally.interventions)));
}

void tst_monkey::repeatsItself()
{
    constexpr int steps = 1500;
    std::uint64_t digests[2] = {};
    for (std::uint64_t& digest : digests) {
        Monkey::Run run(7);
        QCOMPARE(run.play(0, steps), QString());
        digest = run.digest();
    }
    QCOMPARE(digests[1], digests[0]);
}

int main(int argc, char** argv)
{
    TestSupport::preferNoScreen();
    TestSupport::LoudApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (Monkey::isCommand(arguments))
        return Monkey::runCommand(arguments);
    return TestSupport::run<tst_monkey>(arguments);
}

#include "tst_monkey.moc"
