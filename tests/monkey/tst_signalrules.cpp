#include "monkey/invariants.h"
#include "monkey/monkeyhost.h"
#include "support/testmain.h"

using Monkey::Signals;
using Monkey::Step;

Q_DECLARE_METATYPE(Monkey::Step)
Q_DECLARE_METATYPE(Monkey::Signals)

/// That the monkey sees signals at the wrong time, and none where there should be one.
class tst_signalrules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rules_data();
    void rules();
    void hearsThePlot();
    void hearsTheLegend();
    void hearsThePointManager();
    void seesASilentInterval();
};

void tst_signalrules::rules_data()
{
    QTest::addColumn<Step>("step");
    QTest::addColumn<Signals>("heard");
    QTest::addColumn<bool>("pricesMoved");
    QTest::addColumn<QString>("expected");
    const Signals silence;
    Signals labels;
    labels.labels = 1;
    Signals autoScale;
    autoScale.autoScale = 1;
    Signals visibility;
    visibility.visibility = 1;
    Signals wrong;
    wrong.wrong = QStringList{QStringLiteral("all of it")};
    const Step turn = Monkey::Turn();
    const Step scale = Monkey::SetScale();
    const Step toggle = Monkey::ToggleEntry();
    QTest::newRow("silent turn of nothing") << turn << silence << false << "";
    QTest::newRow("turn") << turn << labels << true << "";
    QTest::newRow("silent turn") << turn << silence << true << "unheard";
    QTest::newRow("auto-scale switched off by a turn") << turn << autoScale << false << "";
    QTest::newRow("end of a drag") << Step(Monkey::Release()) << labels << true << "";
    QTest::newRow("silent end of a drag") << Step(Monkey::Release()) << silence << true << "unheard";
    QTest::newRow("drag on an axis") << Step(Monkey::Move()) << autoScale << true << "";
    QTest::newRow("drag on an axis that tells") << Step(Monkey::Move()) << labels << true << "not moved";
    QTest::newRow("the host's scale") << scale << silence << true << "";
    QTest::newRow("labels at the host's scale") << scale << labels << true << "not moved";
    QTest::newRow("auto-scale at the host's scale") << scale << autoScale << false << "without the user";
    QTest::newRow("entry of the host") << toggle << visibility << false << "";
    QTest::newRow("entry restored") << Step(Monkey::RestoreLegend()) << visibility << false << "";
    QTest::newRow("entries restored") << Step(Monkey::RestoreUnchecked()) << visibility << false << "";
    QTest::newRow("entry at a scale") << scale << visibility << false << "nobody checked";
    QTest::newRow("wrong signal") << turn << wrong << false << "all of it";
}

void tst_signalrules::rules()
{
    QFETCH(Step, step);
    QFETCH(Signals, heard);
    QFETCH(bool, pricesMoved);
    QFETCH(QString, expected);
    const QString broken = Monkey::Invariants::signalsOf(step, heard, pricesMoved);
    QVERIFY2(expected.isEmpty() ? broken.isEmpty() : broken.contains(expected), qPrintable(broken));
}

void tst_signalrules::hearsThePlot()
{
    Monkey::Host host;
    host.heard().take();
    Q_EMIT host.plot().updateAxisLabels();
    host.setAutoScale(true);
    Q_EMIT host.plot().autoScaleEnabled(true);
    host.setAutoScale(false);
    Q_EMIT host.plot().autoScaleEnabled(false);
    const Signals heard = host.heard().take();
    QCOMPARE(heard.labels, 1);
    QCOMPARE(heard.autoScale, 2);
    QCOMPARE(heard.wrong,
        (QStringList{QStringLiteral("the auto-scale should be on"),
            QStringLiteral("the auto-scale should be off, which it is")}));
    QCOMPARE(host.heard().take().labels, 0);
}

void tst_signalrules::hearsTheLegend()
{
    Monkey::Host host;
    host.heard().take();
    Q_EMIT host.legend()->visibilityChanged(QStringLiteral("Nobody"), false);
    QCOMPARE(host.heard().take().visibility, 1);
}

void tst_signalrules::hearsThePointManager()
{
    Monkey::Host host;
    host.heard().take();
    host.addStrike(QStringLiteral("200"));
    QCoreApplication::processEvents();
    const Signals sound = host.heard().take();
    QCOMPARE(sound.interval, 1);
    QCOMPARE(sound.wrong, QStringList());

    Q_EMIT host.points()->priceIntervalChanged(host.plot().priceInterval());
    Q_EMIT host.points()->priceIntervalChanged({1.0, 2.0, 1.0, true});
    QCOMPARE(host.heard().take().wrong,
        (QStringList{QStringLiteral("the price interval that was there"),
            QStringLiteral("another price interval than the plot's")}));
}

void tst_signalrules::seesASilentInterval()
{
    Monkey::Host host;
    host.heard().take();
    host.plot().setPriceInterval({1.0, 2.0, 0.5, true});
    QVERIFY(host.heard().take().intervalChangedSilently);
    QVERIFY(!host.heard().take().intervalChangedSilently);
}

PLOT2D_TEST_MAIN(tst_signalrules)
#include "tst_signalrules.moc"
