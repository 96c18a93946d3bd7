#include "shownview.h"

#include "desktest.h"
#include "livetable.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot_layout.h>

ShownView::ShownView()
    : m_data(QString())
    , m_futureIsinId(m_data.import(DeskTest::chain(), 0))
    , m_plot(std::make_unique<DeskPlot>())
    , m_control(new ViewControl(m_plot.get(), [this] { return m_now; }))
{
    m_plot->resize(900, 600);
    m_plot->showSeries(m_futureIsinId, m_data.show(m_futureIsinId, {}), DeskView::Volatility);
    m_plot->show();
    m_shown = QTest::qWaitForWindowExposed(m_plot.get());
}

ShownSeries ShownView::series(double forward, double volatilityShift)
{
    LiveTable::price(LiveTable::options(m_futureIsinId), forward, volatilityShift);
    return m_data.show(m_futureIsinId, {});
}

void ShownView::show(const QwtInterval& prices, const QwtInterval& values)
{
    m_plot->setAutoScaleEnabled(false);
    m_plot->setAxisScale(QwtPlot::xBottom, prices.minValue(), prices.maxValue(), 0.0);
    m_plot->setAxisScale(QwtPlot::yLeft, values.minValue(), values.maxValue(), 0.0);
    Q_EMIT m_plot->updateAxisLabels();
    m_control->forget();
}

void ShownView::show(const QwtInterval& prices)
{
    m_plot->setAutoScaleEnabled(true);
    m_plot->setAxisScale(QwtPlot::xBottom, prices.minValue(), prices.maxValue(), 0.0);
    Q_EMIT m_plot->updateAxisLabels();
    m_control->forget();
}

QPoint ShownView::middle(Place place) const
{
    const QwtPlotLayout* layout = m_plot->plotLayout();
    switch (place) {
    case Prices:
        return layout->scaleRect(QwtPlot::xBottom).center().toPoint();
    case Values:
        return layout->scaleRect(QwtPlot::yLeft).center().toPoint();
    case Title:
        return layout->titleRect().center().toPoint();
    case Canvas:
        break;
    }
    return layout->canvasRect().center().toPoint();
}

void ShownView::putCursor(const QPoint& position) const
{
    QCursor::setPos(m_plot->mapToGlobal(position));
}

void ShownView::turn(int angle, Qt::KeyboardModifiers modifiers, int at)
{
    const QPoint global = QCursor::pos();
    QWheelEvent event(m_plot->mapFromGlobal(global), global, QPoint(), QPoint(0, angle), Qt::NoButton,
        modifiers, Qt::NoScrollPhase, false);
    event.setTimestamp(ulong(at));
    QCoreApplication::sendEvent(m_plot.get(), &event);
}

// As Qt does: the widget under the press gets all up to the release.
void ShownView::send(QEvent::Type type, const QPoint& position, Qt::MouseButtons held)
{
    if (!m_grabber)
        m_grabber = m_plot->childAt(position);
    QWidget* const widget = m_grabber ? m_grabber.data() : m_plot.get();
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, widget->mapFrom(m_plot.get(), position), m_plot->mapToGlobal(position), button,
        held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
    if (type == QEvent::MouseButtonRelease)
        m_grabber.clear();
}

void ShownView::press(const QPoint& position)
{
    send(QEvent::MouseButtonPress, position, Qt::LeftButton);
}

void ShownView::move(const QPoint& position)
{
    send(QEvent::MouseMove, position, Qt::LeftButton);
}

void ShownView::release(const QPoint& position)
{
    send(QEvent::MouseButtonRelease, position, Qt::NoButton);
}

void ShownView::drag(const QPoint& from, const QPoint& offset)
{
    press(from);
    move(from + offset / 2);
    move(from + offset);
    release(from + offset);
}

void ShownView::doubleClickAndHold(const QPoint& position, const QPoint& joltAtFirst)
{
    press(position);
    if (!joltAtFirst.isNull())
        move(position + joltAtFirst);
    release(position + joltAtFirst);
    send(QEvent::MouseButtonDblClick, position + joltAtFirst, Qt::LeftButton);
}

void ShownView::doubleClick(const QPoint& position, const QPoint& joltAtFirst)
{
    doubleClickAndHold(position, joltAtFirst);
    release(position + joltAtFirst);
}
