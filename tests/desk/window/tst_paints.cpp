#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/viewcontrol.h>

#include <plot2d/pricebased2dplotlegend.h>

#include <QMouseEvent>
#include <QWheelEvent>

#include <qwt_plot_layout.h>
#include <qwt_scale_widget.h>

namespace {

/// Counts the paint events of widgets.
class Paints : public QObject {
public:
    void watch(QWidget* widget)
    {
        m_counts.insert(widget, 0);
        widget->installEventFilter(this);
    }

    /// Paint events up to the end of this turn of the event loop, for each widget.
    QVector<int> ofOneTurn()
    {
        QCoreApplication::processEvents();
        const QVector<int> counts = m_counts.values().toVector();
        for (int& count : m_counts)
            count = 0;
        return counts;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++m_counts[watched];
        return QObject::eventFilter(watched, event);
    }

private:
    QMap<QObject*, int> m_counts;
};

}

/// How often the desk is painted when much changes at once.
class tst_paints : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void onceInATurn_data();
    void onceInATurn();

private:
    void change(const QString& what, int i);
    void turn(int angle, Qt::KeyboardModifiers modifiers);
    void drag(int i);
    DeskPlot& plot() const { return *m_window->plot(); }

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    int m_futureIsinId = 0;
};

void tst_paints::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::chain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    m_window->resize(900, 600);
    m_window->showSeries(m_futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    plot().setAxisScale(QwtPlot::xBottom, 80.0, 125.0, 0.0);
    Q_EMIT plot().updateAxisLabels();
    QCursor::setPos(plot().mapToGlobal(plot().plotLayout()->canvasRect().center().toPoint()));
}

void tst_paints::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_paints::turn(int angle, Qt::KeyboardModifiers modifiers)
{
    const QPoint global = QCursor::pos();
    QWheelEvent event(plot().mapFromGlobal(global), global, QPoint(), QPoint(0, angle), Qt::NoButton,
        modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&plot(), &event);
}

void tst_paints::drag(int i)
{
    const QPoint start = plot().plotLayout()->scaleRect(QwtPlot::xBottom).center().toPoint();
    if (i == 0)
        QTest::mousePress(&plot(), Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent event(QEvent::MouseMove, start - QPoint(i % 2 ? 3 : 6, 0), start - QPoint(i % 2 ? 3 : 6, 0),
        QCursor::pos(), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&plot(), &event);
}

void tst_paints::change(const QString& what, int i)
{
    const int sign = i % 2 ? -1 : 1;
    auto* const control = plot().findChild<ViewControl*>();
    if (what == QLatin1String("wheel"))
        turn(120 * sign, Qt::NoModifier);
    else if (what == QLatin1String("wheel over the prices"))
        turn(120 * sign, Qt::ControlModifier);
    else if (what == QLatin1String("drag of an axis"))
        drag(i);
    else if (what == QLatin1String("keys"))
        sign > 0 ? control->zoomIn() : control->panRight();
    else if (what == QLatin1String("fit and undo"))
        sign > 0 ? control->fitAll() : control->undo();
    else if (what == QLatin1String("auto-scale"))
        control->setAutoScale(sign < 0);
    else if (what == QLatin1String("modes of the axis"))
        m_window->setAxisMode(AxisMode(i % 3));
    else if (what == QLatin1String("legend"))
        plot().findChild<PriceBased2dPlotLegend*>()->setCheckBoxChecked(QStringLiteral("Smile"), sign < 0);
    else if (what == QLatin1String("quotes"))
        LiveTable::price(LiveTable::options(m_futureIsinId), 100.0 + 0.01 * i, 0.001 * i);
    else if (what == QLatin1String("series"))
        plot().updateSeries(*m_window->shownSeries());
}

void tst_paints::onceInATurn_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("changes");
    for (const char* const what : {"wheel", "wheel over the prices", "drag of an axis", "keys",
             "fit and undo", "auto-scale", "modes of the axis", "legend", "quotes", "series"}) {
        for (const int changes : {1, 2, 100})
            QTest::addRow("%s, %d", what, changes) << what << changes;
    }
}

void tst_paints::onceInATurn()
{
    QFETCH(QString, what);
    QFETCH(int, changes);
    Paints paints;
    for (QWidget* const widget : {plot().canvas(), static_cast<QWidget*>(plot().axisWidget(QwtPlot::xBottom)),
             static_cast<QWidget*>(plot().axisWidget(QwtPlot::yLeft)), static_cast<QWidget*>(&plot())})
        paints.watch(widget);
    // Until what has gone before is painted.
    const QVector<int> none(4, 0);
    QTRY_COMPARE(paints.ofOneTurn(), none);

    for (int i = 0; i < changes; ++i)
        change(what, i);
    bool painted = false;
    // Quotes wait for a turn, and the labels' new widths for another.
    QElapsedTimer clock;
    clock.start();
    while (!painted && clock.elapsed() < 5000) {
        const QVector<int> counts = paints.ofOneTurn();
        QVERIFY2(*std::max_element(counts.begin(), counts.end()) <= 1, qPrintable(what));
        painted = counts != none;
    }
    QVERIFY(painted);
    for (int i = 0; i < 5; ++i) {
        const QVector<int> counts = paints.ofOneTurn();
        QVERIFY2(*std::max_element(counts.begin(), counts.end()) <= 1, qPrintable(what));
    }
}

PLOT2D_TEST_MAIN(tst_paints)
#include "tst_paints.moc"
