#include "plot2d/pricebased2dplotscaleengine.h"

#include "columnnames_p.h"
#include "fuzzyequality_p.h"
#include "plot2d/pricebased2dplot.h"
#include "plot2d/pricebased2dplotscaledraw.h"
#include "scaledivision_p.h"

#include <c_api/common.h>
#include <database/table.h>

#include <qwt_interval.h>

#include <algorithm>
#include <cmath>

namespace {

int precisionOfStrikes(const Table* table)
{
    if (!table)
        return -1;
    const QList<TableColumnDef*> columns = table->fieldDefs();
    const auto strike = std::find_if(columns.cbegin(), columns.cend(),
        [](const TableColumnDef* column) { return column->name == ColumnNames::of(SecurityColumn::Strike); });
    return strike == columns.cend() ? -1 : (*strike)->decimals;
}

}

PriceBased2dPlotScaleEngine::PriceBased2dPlotScaleEngine(PriceBased2dPlot* plot, int axis, unsigned int base)
    : QwtLinearScaleEngine(base)
    , m_plot(plot)
    , m_axis(axis)
    , m_strikePrecision(precisionOfStrikes(plot ? plot->securitiesTable() : nullptr))
{
}

PriceBased2dPlotScaleEngine::~PriceBased2dPlotScaleEngine() = default;

QwtScaleDiv PriceBased2dPlotScaleEngine::divideScale(
    double x1, double x2, int maxMajorSteps, int maxMinorSteps, double stepSize) const
{
    if (!ScaleDivision::isDivisible({x1, x2, maxMajorSteps, maxMinorSteps, stepSize, base()}))
        return m_lastDivision;

    QwtScaleDiv division
        = keptOrNew(QwtLinearScaleEngine::divideScale(x1, x2, maxMajorSteps, maxMinorSteps, stepSize),
            {x1, x2, maxMajorSteps, maxMinorSteps, stepSize});
    if (m_rescaleFactor != decimal::zero && !division.isEmpty() && m_strikePrecision >= 1) {
        const double price = ScaleDivision::anchorPrice(m_rescaleFactor.toDouble(), m_strikePrecision);
        division = ScaleDivision::anchored(division, price, x1, x2);
    }
    m_lastDivision = division;
    return division;
}

QwtScaleDiv PriceBased2dPlotScaleEngine::keptOrNew(
    const QwtScaleDiv& division, const Arguments& arguments) const
{
    if (m_axis != QwtPlot::yLeft || !m_plot || m_plot->autoScaleEnabled() || !m_scaleDraw)
        return division;
    if (keepsPrevious(division))
        return QwtLinearScaleEngine::divideScale(m_previous.lower, m_previous.upper, m_previous.maxMajorSteps,
            m_previous.maxMinorSteps, m_previous.step);
    m_previous = arguments;
    return division;
}

bool PriceBased2dPlotScaleEngine::keepsPrevious(const QwtScaleDiv& division) const
{
    const double width = division.interval().width();
    const double previousWidth = m_previous.upper - m_previous.lower;
    return previousWidth > width && !commonFuzzyCompare(width, previousWidth)
        && m_scaleDraw->ticksShrinked(division) && m_previous.maxMajorSteps > 0
        && m_previous.maxMinorSteps > 0 && (m_previous.step > 0.0 || isFuzzyZero(m_previous.step));
}
