#include "shownplot.h"

#include "desktest.h"

#include <QCoreApplication>

ShownPlot::ShownPlot()
    : m_data(std::make_unique<DeskData>(QString()))
{
    OptionChain chain = DeskTest::chain();
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.volatility = DeskTest::volatility(quote.strike.toDouble());
    import(chain);
    m_plot = std::make_unique<DeskPlot>();
}

void ShownPlot::import(const OptionChain& chain)
{
    m_futureIsinId = m_data->import(chain, 0);
}

ShownSeries ShownPlot::show(DeskView view, const SeriesFacts& given)
{
    const ShownSeries series = m_data->show(m_futureIsinId, given);
    m_plot->showSeries(m_futureIsinId, series, view);
    return series;
}

QImage ShownPlot::picture(const QSize& size)
{
    m_plot->setAttribute(Qt::WA_DontShowOnScreen);
    m_plot->resize(size);
    m_plot->show();
    QCoreApplication::processEvents();
    return m_plot->grab().toImage();
}

const PriceBased2dPlotCurve* ShownPlot::curve(int type) const
{
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(type);
    return curves.size() == 1 ? curves.first() : nullptr;
}
