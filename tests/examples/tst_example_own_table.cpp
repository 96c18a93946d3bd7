#define main exampleMain
#include "own_table.cpp"
#undef main

#include "examples/plotpicture.h"
#include "support/testmain.h"

/// The example's curve has a sample for each row of its table, at any time.
class tst_example_own_table : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Market::open();
        ICore::instance()->database()->dropTable("volatilities");
    }

    void curveFollowsTheRows()
    {
        VolatilityTable volatilities;
        TablePlot plot(volatilities);
        plot.show();
        QCOMPARE(PlotPicture(plot).onCanvas(color), 0);

        for (const QPointF& sample : {QPointF(80.0, 0.34), QPointF(90.0, 0.26), QPointF(104.0, 0.3)})
            volatilities.append(sample);
        QVERIFY(PlotPicture(plot).isColored(90.0, 0.26, color));
        QVERIFY(PlotPicture(plot).isColored(85.0, 0.30, color));

        Table* const table = volatilities.table();
        const auto raise = [](const Record&, const Table::FieldAccess& field) { field(1).setDouble(0.32); };
        table->changeRows({table->record(1)}, raise);
        QVERIFY(PlotPicture(plot).isColored(90.0, 0.32, color));
        QVERIFY(PlotPicture(plot).isColored(85.0, 0.33, color));

        table->removeRows({table->record(1)});
        QVERIFY(!PlotPicture(plot).isColored(90.0, 0.32, color));
        QVERIFY(PlotPicture(plot).isColored(92.0, 0.32, color));
    }

private:
    const QColor color = QColor(0, 158, 115);
};

PLOT2D_TEST_MAIN(tst_example_own_table)
#include "tst_example_own_table.moc"
