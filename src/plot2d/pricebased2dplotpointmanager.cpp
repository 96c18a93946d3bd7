#include "plot2d/pricebased2dplotpointmanager.h"

#include "fieldreading_p.h"
#include "fuzzyequality_p.h"
#include "plot2d/pricebased2dplot.h"
#include "pricepoints_p.h"

#include <basic_models/strikebybasecodemodel.h>
#include <basic_models/strikebymaxsessionmodel.h>
#include <c_api/common.h>
#include <directory/securitydirectory.h>

#include <qwt_interval.h>
#include <qwt_scale_div.h>

#include <cmath>

PriceBased2dPlotPointManager::PriceBased2dPlotPointManager(bool maxSessionModel, PriceBased2dPlot* plot)
    : QObject(plot)
    , m_plot(plot)
    , m_maxSessionModel(maxSessionModel)
{
    qRegisterMetaType<PriceInterval>("PriceInterval");

    Table* table = plot ? plot->securitiesTable() : nullptr;
    if (!table)
        return;
    if (maxSessionModel)
        m_model = new StrikeByMaxSessionModel(table, this);
    else
        m_model = new StrikeByBaseCodeModel(table, this);

    connect(m_model, SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(updatePriceInterval()));
    connect(m_model, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(updatePriceInterval()));
    connect(m_model, SIGNAL(modelReset()), this, SLOT(updatePriceInterval()));
    if (!maxSessionModel)
        startModel();
}

PriceBased2dPlotPointManager::~PriceBased2dPlotPointManager() = default;

void PriceBased2dPlotPointManager::startModel()
{
    const Record future = m_plot->getFuture();
    const int column = m_plot->securityColumns()[SecurityColumn::BaseCode];
    const QString baseCode = Field(FieldReading::fieldOf(future, column)).toString();
    if (baseCode.isEmpty())
        return;
    m_model->setBaseCode(baseCode);
    m_model->sort(0, Qt::AscendingOrder);
}

void PriceBased2dPlotPointManager::initCore(const FilterParams& params)
{
    auto* model = qobject_cast<StrikeByMaxSessionModel*>(m_model.data());
    if (m_maxSessionModel && model)
        model->setFilterParams(params);
}

FilterParams PriceBased2dPlotPointManager::filterParams() const
{
    const auto* model = qobject_cast<const StrikeByMaxSessionModel*>(m_model.data());
    return m_maxSessionModel && model ? model->filterParams() : FilterParams();
}

PriceInterval PriceBased2dPlotPointManager::interval() const
{
    return m_plot ? m_plot->priceInterval() : PriceInterval();
}

void PriceBased2dPlotPointManager::setPlot(PriceBased2dPlot* plot)
{
    m_plot = plot;
    if (!m_plot || !m_model || m_plot->baseCode() == m_model->baseCode())
        return;
    // The model's reset reaches listeners of the interval, which may delete the manager or its model.
    const QPointer<StrikeByBaseCodeModel> model(m_model);
    model->setBaseCode(m_plot->baseCode());
    if (model)
        model->sort(0, Qt::AscendingOrder);
}

StrikeByBaseCodeModel* PriceBased2dPlotPointManager::model() const
{
    return m_model;
}

void PriceBased2dPlotPointManager::updatePriceInterval()
{
    if (!m_plot || !m_model)
        return;
    const PriceInterval previous = m_plot->priceInterval();
    const PriceInterval next = currentInterval();
    if (previous == next)
        return;
    m_plot->setPriceInterval(next);
    Q_EMIT priceIntervalChanged(next);
}

PriceInterval PriceBased2dPlotPointManager::currentInterval() const
{
    const int rows = m_model->rowCount(QModelIndex());
    if (rows < 2)
        return PriceInterval();
    const Record first = m_model->record(m_model->index(0, 0, QModelIndex()));
    if (first.isNull())
        return PriceInterval();

    const SecurityColumns& columns = m_plot->securityColumns();
    using FieldReading::fieldOf;
    const int stockId = FieldReading::toInt(fieldOf(first, columns[SecurityColumn::StockId]));
    const int boardId = FieldReading::toInt(fieldOf(first, columns[SecurityColumn::BoardId]));
    const long long secId = FieldReading::toLongLong(fieldOf(first, columns[SecurityColumn::SecId]));
    const int decimals = SecurityDirectory::i()->decimalsById(stockId, boardId, secId);
    return PricePoints::interval(
        {rows, m_model->strike(0), m_model->strike(rows - 1), m_model->minStep()}, decimals);
}

QList<double> PriceBased2dPlotPointManager::minStepPoints(double from, double to, double step)
{
    return PricePoints::progression(from, to, step);
}

QList<double> PriceBased2dPlotPointManager::calcPlotPoints(bool force)
{
    if (!m_plot || !m_model)
        return QList<double>();
    const int rows = m_model->rowCount(QModelIndex());
    const QwtInterval visible = m_plot->axisScaleDiv(QwtPlot::xBottom).interval();
    const PricePoints::View view{visible.minValue(), visible.maxValue()};
    const PriceInterval prices = m_plot->priceInterval();
    if (view.low > view.high || commonFuzzyCompare(view.low, view.high) || rows < 2 || !prices.valid)
        return QList<double>();

    QVector<decimal> strikes;
    strikes.reserve(rows);
    for (int row = 0; row < rows; ++row)
        strikes.append(m_model->strike(row));
    const double first = strikes.first().toDouble();
    const double last = strikes.last().toDouble();
    if (strikes.first() >= strikes.last() || (!force && (last < view.low || first > view.high)))
        return QList<double>();

    const auto bracket = PricePoints::bracket(strikes, view);
    if (!bracket)
        return QList<double>();
    const QList<double> base = minStepPoints(first, last, prices.minStep);
    const double priceStep = m_plot->priceStep();
    if (!(priceStep > 0.0) || isFuzzyZero(priceStep))
        return QList<double>();

    const double width = view.high - view.low;
    constexpr double closeView = 100.0;
    if (width < closeView * priceStep || commonFuzzyCompare(width, closeView * priceStep))
        return minStepPoints(first, last, priceStep);
    return PricePoints::densified(
        base, bracket->first.toDouble(), bracket->second.toDouble(), prices.minStep);
}
