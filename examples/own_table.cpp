// A table of the host's own, beside the one of securities: a curve that follows its rows.
#include "common/exampleplot.h"
#include "common/market.h"
#include "common/program.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <database/database.h>
#include <database/icore.h>
#include <database/record.h>
#include <database/table.h>

#include <QApplication>

/// Volatilities by strike, in the order of the strikes.
class VolatilityTable {
public:
    VolatilityTable()
        : m_table(ICore::instance()->database()->createTable(
            "volatilities", {{"strike", FieldType::Double}, {"volatility", FieldType::Double}}))
    {
    }

    void append(const QPointF& sample)
    {
        const Record row = m_table->createRow();
        m_table->value(row, 0).setDouble(sample.x());
        m_table->value(row, 1).setDouble(sample.y());
        m_table->appendRows({row});
    }

    QVector<QPointF> samples() const
    {
        QVector<QPointF> samples;
        for (int row = 0; row < m_table->rowCount(); ++row) {
            const Record record = m_table->record(row);
            samples.append({record.value(0).toDouble(), record.value(1).toDouble()});
        }
        return samples;
    }

    Table* table() const { return m_table; }

private:
    Table* m_table;
};

class TablePlot : public ExamplePlot {
public:
    explicit TablePlot(const VolatilityTable& volatilities)
        : m_volatilities(volatilities)
        , m_curve(addCurve("Volatility", 9, QColor(0, 158, 115)))
    {
        const Table* const table = volatilities.table();
        connect(table, &Table::rowsInserted, this, &TablePlot::follow);
        connect(table, &Table::rowsChanged, this, &TablePlot::follow);
        connect(table, &Table::rowsRemoved, this, &TablePlot::follow);
        follow();
    }

private:
    void follow()
    {
        m_curve->setSamples(m_volatilities.samples());
        updateYAxisScale();
    }

    const VolatilityTable& m_volatilities;
    PriceBased2dPlotCurve* m_curve;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Market::open();
    VolatilityTable volatilities;
    TablePlot plot(volatilities);
    for (const QPointF& sample : Market::smile())
        volatilities.append(sample);
    return Program::show(plot);
}
