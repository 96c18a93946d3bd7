#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/quotesdock.h>
#include <quotes/quotesmodel.h>
#include <quotes/quotesview.h>
#include <window/curvetracker.h>
#include <window/curvewalk.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/hoverpicker.h>
#include <window/overlaycurve.h>
#include <window/readoutitem.h>

#include <qwt_scale_map.h>

/// The point that the mouse reads out: its mark, its text, and its row in the table.
class tst_rowplotlink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void marksThePoint();
    void theMarkGoesWithTheMouse();
    void theMarkGivesWayToTheKeys();
    void theTextHidesNoPoint();
    void anotherSeriesHasNoRow();
    void theRowFollowsTheView();
    void theRowFollowsTheAxis();
    void theChosenRowStays();
    void escapeInTheTableLeavesThePoints();

private:
    DeskPlot& plot() const { return *m_window->plot(); }
    HoverPicker& picker() const { return *plot().findChild<HoverPicker*>(); }
    QPointF pixel(double strike, double volatility) const;
    void moveMouse(const QPointF& position) const;
    void moveMouse(double strike) const { moveMouse(pixel(strike, DeskTest::volatility(strike))); }
    double selectedStrike() const;
    double strikeRead() const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    QuotesView* m_view = nullptr;
    QuotesModel* m_model = nullptr;
};

void tst_rowplotlink::init()
{
    m_data = std::make_unique<DeskData>(QString());
    const int futureIsinId = m_data->import(DeskTest::quotedChain(), 0);
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Volatility);
    auto* const dock = new QuotesDock(m_window.get());
    m_view = dock->findChild<QuotesView*>();
    m_model = dock->findChild<QuotesModel*>();
    m_window->resize(1300, 640);
    m_window->showSeries(futureIsinId, SeriesFacts());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_rowplotlink::cleanup()
{
    m_window.reset();
    m_data.reset();
}

QPointF tst_rowplotlink::pixel(double strike, double volatility) const
{
    return QPointF(plot().canvasMap(QwtPlot::xBottom).transform(strike),
        plot().canvasMap(QwtPlot::yLeft).transform(volatility));
}

void tst_rowplotlink::moveMouse(const QPointF& position) const
{
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot().canvas(), &move);
}

double tst_rowplotlink::selectedStrike() const
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.isEmpty() ? 0.0 : m_model->rows().at(rows.first().row()).strike;
}

// Of the row that belongs to what the mouse reads out.
double tst_rowplotlink::strikeRead() const
{
    const std::optional<double> price = plot().tracker()->price();
    return price ? m_model->rows().at(QuotesRows::nearest(m_model->rows(), *price)).strike : 0.0;
}

void tst_rowplotlink::marksThePoint()
{
    QVERIFY(!picker().shownPoint());
    // Beside the point.
    moveMouse(pixel(107.5, DeskTest::volatility(107.5)) + QPointF(3.0, -2.0));
    const std::optional<double> price = plot().tracker()->price();
    QVERIFY(price && std::abs(*price - 107.5) < 1.0);
    const std::optional<QPointF> marked = picker().shownPoint();
    QVERIFY(marked);
    QCOMPARE(marked->x(), pixel(*price, 0.0).x());
    QVERIFY(std::abs(marked->y() - pixel(107.5, DeskTest::volatility(107.5)).y()) < 3.0);
    const QImage with = plot().canvas()->grab(ReadOutItem::ringBounds(*marked)).toImage();
    picker().hidePoint();
    QVERIFY(with != plot().canvas()->grab(ReadOutItem::ringBounds(*marked)).toImage());
}

void tst_rowplotlink::theMarkGoesWithTheMouse()
{
    moveMouse(107.5);
    QVERIFY(picker().shownPoint());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(plot().canvas(), &leave);
    QVERIFY(!picker().shownPoint());
}

void tst_rowplotlink::theMarkGivesWayToTheKeys()
{
    moveMouse(107.5);
    QTest::keyClick(plot().canvas(), Qt::Key_F2);
    QVERIFY(plot().walk()->isActive());
    QVERIFY(!picker().shownPoint());
    QTest::keyClick(plot().canvas(), Qt::Key_Escape);
    QVERIFY(picker().shownPoint());
}

void tst_rowplotlink::theTextHidesNoPoint()
{
    const QRect canvas = plot().canvas()->contentsRect();
    int read = 0;
    for (int x = canvas.left() + 1; x < canvas.right(); x += canvas.width() / 23) {
        for (int y = canvas.top() + 1; y < canvas.bottom(); y += canvas.height() / 17) {
            moveMouse(QPointF(x, y));
            const QRect box = picker().trackerRect(picker().trackerFont());
            if (!picker().shownPoint())
                continue;
            ++read;
            const QRect ring = ReadOutItem::ringBounds(*picker().shownPoint());
            QVERIFY2(!box.intersects(ring), qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
            QVERIFY(canvas.contains(box));
        }
    }
    QVERIFY(read > 300);
}

void tst_rowplotlink::anotherSeriesHasNoRow()
{
    moveMouse(107.5);
    QCOMPARE(selectedStrike(), 107.5);
    auto* const other = new OverlayCurve(&plot(), QStringLiteral("another"));
    const QPointF sample(109.0, DeskTest::volatility(107.5) + 0.1);
    other->setLegendIconSize(QSize(24, 13));
    other->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    other->attach(&plot());
    other->setSamples(QVector<QPointF>{{107.0, sample.y()}, sample, {111.0, sample.y()}});
    plot().followOverlays();
    moveMouse(pixel(sample.x(), sample.y()));
    QCOMPARE(picker().trackerText(QPoint()).text().section(QLatin1Char('\n'), 0, 0), other->title().text());
    QCOMPARE(plot().tracker()->price(), std::optional<double>());
    QCOMPARE(selectedStrike(), 0.0);
    QVERIFY(picker().shownPoint());
    moveMouse(95.0);
    QCOMPARE(selectedStrike(), 95.0);
}

void tst_rowplotlink::theRowFollowsTheView()
{
    moveMouse(107.5);
    const QwtInterval prices = plot().axisScaleDiv(QwtPlot::xBottom).interval();
    plot().setAxisScale(QwtPlot::xBottom, prices.minValue() - 10.0, prices.maxValue() - 10.0, 0.0);
    plot().replot();
    QVERIFY(std::abs(strikeRead() - 97.5) <= 2.5);
    QCOMPARE(selectedStrike(), strikeRead());
}

void tst_rowplotlink::theRowFollowsTheAxis()
{
    for (const double strike : {82.5, 107.5, 112.5}) {
        m_window->setAxisMode(AxisMode::Price);
        plot().replot();
        moveMouse(strike);
        m_window->setAxisMode(AxisMode::Deviations);
        plot().replot();
        QCOMPARE(selectedStrike(), strikeRead());
    }
}

void tst_rowplotlink::theChosenRowStays()
{
    moveMouse(107.5);
    m_view->setFocus();
    QTest::keyClick(m_view, Qt::Key_Down);
    QCOMPARE(selectedStrike(), 110.0);
    plot().walk()->end();
    plot().replot();
    QCOMPARE(selectedStrike(), 110.0);
}

void tst_rowplotlink::escapeInTheTableLeavesThePoints()
{
    m_view->setFocus();
    QTest::keyClick(m_view, Qt::Key_Down);
    QVERIFY(plot().walk()->isActive());
    QTest::keyClick(m_view, Qt::Key_Escape);
    QVERIFY(!plot().walk()->isActive());
    QVERIFY(m_view->hasFocus());
}

PLOT2D_TEST_MAIN(tst_rowplotlink)
#include "tst_rowplotlink.moc"
