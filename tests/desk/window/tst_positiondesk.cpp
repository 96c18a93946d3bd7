#include "desktest.h"
#include "livetable.h"
#include "support/testmain.h"

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotscaledraw.h>
#include <position/legmodel.h>
#include <position/positionfile.h>
#include <position/positionpanel.h>
#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/deskwindow.h>
#include <window/positiondesk.h>

#include <QAction>
#include <QDockWidget>
#include <QFile>
#include <QTableView>
#include <QTemporaryDir>

#include <qwt_plot_marker.h>
#include <qwt_plot_textlabel.h>

#include <cmath>

using Position::Leg;
using Position::LegKind;
using Position::LegModel;

namespace {

// A second expiry, whose forward stands at 104.
OptionChain twoExpiries()
{
    OptionChain chain = DeskTest::chain();
    OptionSeries far = chain.series.first();
    far.expiry = QDate(2024, 7, 2);
    far.forward = 104.0;
    chain.series.append(far);
    chain.series.first().forward = DeskTest::forward;
    return chain;
}

}

/// The position on the desk: its table, its view, its file.
class tst_positiondesk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsTheTableInItsView();
    void tellsWhatToDoWithoutPosition();
    void addsALegAtTheMoney();
    void takesTheMarketsPrice();
    void drawsCurvesAndMarks();
    void readsOutInMoney();
    void followsEditsAndQuotes();
    void legsOfAnotherExpiry();
    void comesBackAfterARestart();
    void brokenFileIsKeptAside();
    void ofEachUnderlying();
    void withoutSeriesThereIsNoTable();
    void actions();

private:
    void open(DeskView view);
    LegModel& model() const { return *m_window->position()->model(); }
    DeskPlot& plot() const { return *m_window->plot(); }
    bool set(int row, int column, const QVariant& value) const
    {
        return model().setData(model().index(row, column), value);
    }
    QString text(int row, int column) const { return model().index(row, column).data().toString(); }
    PriceBased2dPlotCurve* curve(const char* title) const;
    QAction* action(const char* text) const;
    QString summary() const { return m_window->findChild<Position::PositionPanel*>()->summary(); }
    QString file() const { return m_folder->filePath(QStringLiteral("positions.json")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskWindow> m_window;
    int m_future = 0;
};

void tst_positiondesk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_data = std::make_unique<DeskData>(QString());
    m_future = m_data->import(twoExpiries(), 0);
    open(DeskView::Position);
}

void tst_positiondesk::cleanup()
{
    m_window.reset();
    m_data.reset();
}

void tst_positiondesk::open(DeskView view)
{
    m_window.reset();
    m_window = std::make_unique<DeskWindow>(*m_data, view);
    m_window->position()->setFile(file());
    m_window->showSeries(m_future, SeriesFacts());
    m_window->resize(1000, 640);
    m_window->show();
}

PriceBased2dPlotCurve* tst_positiondesk::curve(const char* title) const
{
    const QList<PriceBased2dPlotCurve*> all = plot().attachedCurves(-1);
    for (PriceBased2dPlotCurve* const each : all) {
        if (each->title().text() == QLatin1String(title))
            return each;
    }
    return nullptr;
}

QAction* tst_positiondesk::action(const char* text) const
{
    const QList<QAction*> all = m_window->findChildren<QAction*>();
    for (QAction* const each : all) {
        if (each->text().remove(QLatin1Char('&')) == QLatin1String(text))
            return each;
    }
    qFatal("no action \"%s\"", text);
}

void tst_positiondesk::showsTheTableInItsView()
{
    QVERIFY(m_window->position()->dock()->isVisible());
    action("Value")->trigger();
    QVERIFY(!m_window->position()->dock()->isVisible());
    QVERIFY(plot().itemList(QwtPlotItem::Rtti_PlotTextLabel).isEmpty());
    action("Table")->trigger();
    QVERIFY(m_window->position()->dock()->isVisible());
    action("Position")->trigger();
    QVERIFY(m_window->position()->dock()->isVisible());
    QCOMPARE(plot().axisTitle(QwtPlot::yLeft).text(), QStringLiteral("Profit and loss"));
    QCOMPARE(plot().axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Price"));
}

void tst_positiondesk::tellsWhatToDoWithoutPosition()
{
    const QwtPlotItemList hints = plot().itemList(QwtPlotItem::Rtti_PlotTextLabel);
    QCOMPARE(hints.size(), 1);
    const auto* const hint = static_cast<QwtPlotTextLabel*>(hints.first());
    QVERIFY(hint->text().text().contains(QStringLiteral("Insert")));
    model().addLeg();
    QVERIFY(plot().itemList(QwtPlotItem::Rtti_PlotTextLabel).isEmpty());
    model().removeLeg(0);
    QCOMPARE(plot().itemList(QwtPlotItem::Rtti_PlotTextLabel).size(), 1);
}

void tst_positiondesk::addsALegAtTheMoney()
{
    action("Add leg")->trigger();
    const Leg leg = model().legs().first();
    QVERIFY(leg.kind == LegKind::Call);
    QCOMPARE(leg.expiry, QDate(2024, 4, 2));
    QCOMPARE(leg.quantity, 1);
    QCOMPARE(leg.strike, 100.0);
    const double settled = m_window->shownSeries()->data.options.quotes[32].settlement->toDouble();
    QCOMPARE(leg.price, settled);
    QVERIFY(m_window->findChild<QTableView*>()->hasFocus() || !m_window->isActiveWindow());
}

void tst_positiondesk::takesTheMarketsPrice()
{
    model().addLeg();
    const auto settlement = [this](OptionType type, double strike) {
        for (const OptionQuote& quote : m_window->shownSeries()->data.options.quotes) {
            if (quote.type == type && quote.strike.toDouble() == strike)
                return quote.settlement->toDouble();
        }
        return -1.0;
    };
    QVERIFY(set(0, LegModel::Kind, int(LegKind::Put)));
    QCOMPARE(model().legs()[0].price, settlement(OptionType::Put, 100.0));
    QVERIFY(set(0, LegModel::Strike, QStringLiteral("92.5")));
    QCOMPARE(model().legs()[0].price, settlement(OptionType::Put, 92.5));
    QVERIFY(set(0, LegModel::Price, QStringLiteral("1.5")));
    QCOMPARE(model().legs()[0].price, 1.5);
    QVERIFY(set(0, LegModel::Price, QString()));
    QCOMPARE(model().legs()[0].price, settlement(OptionType::Put, 92.5));
    // Between the strikes the smile knows, to the cent.
    QVERIFY(set(0, LegModel::Strike, QStringLiteral("93.77")));
    const double between = model().legs()[0].price;
    QVERIFY(between > settlement(OptionType::Put, 92.5) && between < settlement(OptionType::Put, 95.0));
    QVERIFY(std::abs(between * 100.0 - std::round(between * 100.0)) < 1e-9);
    QVERIFY(set(0, LegModel::Kind, int(LegKind::Future)));
    QCOMPARE(model().legs()[0].price, 100.0);
    QVERIFY(set(0, LegModel::Expiry, QDate(2024, 7, 2)));
    QCOMPARE(model().legs()[0].price, 104.0);
}

void tst_positiondesk::drawsCurvesAndMarks()
{
    model().setLegs({{LegKind::Call, QDate(2024, 4, 2), 1, 90.0, 12.0},
        {LegKind::Call, QDate(2024, 4, 2), -2, 100.0, 6.0},
        {LegKind::Call, QDate(2024, 4, 2), 1, 110.0, 3.0}});
    Q_EMIT model().edited();
    for (const char* const title : {"Profit at expiry", "Profit today", "Break-even", "Forward"})
        QVERIFY2(curve(title), title);
    QCOMPARE(plot().attachedCurves(-1).size(), 4);
    const QList<QwtPlotMarker*> markers = plot().attachedMarkers();
    QCOMPARE(markers.size(), 2);
    QCOMPARE(markers[0]->value(), QPointF(93.0, 0.0));
    QCOMPARE(markers[0]->label().text(), QStringLiteral("93"));
    QCOMPARE(markers[1]->label().text(), QStringLiteral("107"));
    // The prices stand outside of both, or, where there is no room for that, inside.
    QVERIFY(markers[0]->labelAlignment() & Qt::AlignLeft);
    QVERIFY(markers[1]->labelAlignment() & Qt::AlignRight);
    plot().setAxisScale(QwtPlot::xBottom, 92.5, 107.5, 0.0);
    plot().replot();
    QVERIFY(markers[0]->labelAlignment() & Qt::AlignRight);
    QVERIFY(markers[1]->labelAlignment() & Qt::AlignLeft);
    // The line of no profit is a marker as well.
    QCOMPARE(plot().itemList(QwtPlotItem::Rtti_PlotMarker).size(), 3);
    QVERIFY2(summary().contains(QStringLiteral("93 and 107")), qPrintable(summary()));
    action("Volatility")->trigger();
    QVERIFY(!curve("Profit today"));
    for (const QwtPlotMarker* const marker : plot().attachedMarkers())
        QVERIFY(marker->label().text().isEmpty());
}

void tst_positiondesk::readsOutInMoney()
{
    model().addLeg();
    const auto* const draw
        = dynamic_cast<const PriceBased2dPlotConverter*>(plot().axisScaleDraw(QwtPlot::yLeft));
    QVERIFY(draw);
    QCOMPARE(draw->convertedValue(2.5), QStringLiteral("+2.5"));
    QCOMPARE(draw->convertedValue(-2.5), QStringLiteral("-2.5"));
    action("Volatility")->trigger();
    QCOMPARE(draw->convertedValue(0.25), QStringLiteral("25%"));
}

void tst_positiondesk::followsEditsAndQuotes()
{
    model().addLeg();
    const double paid = model().legs()[0].price;
    const PriceBased2dPlotCurve* const before = curve("Profit at expiry");
    QCOMPARE(before->sample(0).y(), -paid);
    QVERIFY(set(0, LegModel::Quantity, QStringLiteral("-3")));
    QCOMPARE(curve("Profit at expiry"), before);
    QCOMPARE(before->sample(0).y(), 3.0 * paid);
    const QString now = text(0, LegModel::Profit);
    QVERIFY(set(0, LegModel::Quantity, QStringLiteral("1")));

    LiveTable::price(LiveTable::options(m_future), 100.0, 0.05);
    QTRY_VERIFY(text(0, LegModel::Profit).startsWith(QLatin1Char('+')));
    QVERIFY(text(0, LegModel::Profit) != now);
    QCOMPARE(model().legs()[0].price, paid);
}

void tst_positiondesk::legsOfAnotherExpiry()
{
    model().addLeg();
    model().addLeg();
    QVERIFY(set(1, LegModel::Expiry, QDate(2024, 7, 2)));
    QVERIFY(set(0, LegModel::Quantity, QStringLiteral("-1")));
    QCOMPARE(m_window->shownSeries()->position.legs().size(), 2);
    QVERIFY(!m_window->shownSeries()->position.isPolygon());
    QVERIFY(curve("Profit at expiry"));
    // The other series is followed as well.
    const QString before = text(1, LegModel::Value);
    int far = 0;
    for (const StoredSeries& series : m_data->series()) {
        if (series.expiry == QDate(2024, 7, 2))
            far = series.futureIsinId;
    }
    LiveTable::setQuote(far, 110.0);
    QTRY_VERIFY(text(1, LegModel::Value) != before);
    QCOMPARE(m_window->shownSeries()->position.legs()[1].market.forward, 110.0);
    // Without its series a leg is told of, and left out.
    LiveTable::removeSeries(far);
    QTRY_COMPARE(m_window->shownSeries()->position.leftOut(), 1);
    QVERIFY2(summary().contains(QStringLiteral("1 leg")), qPrintable(summary()));
    QCOMPARE(text(1, LegModel::Value), QStringLiteral("\u2013"));
}

void tst_positiondesk::comesBackAfterARestart()
{
    model().addLeg();
    set(0, LegModel::Quantity, QStringLiteral("-7"));
    model().addLeg();
    set(1, LegModel::Expiry, QDate(2024, 7, 2));
    const QVector<Leg> legs = model().legs();
    open(DeskView::Position);
    QCOMPARE(model().legs(), legs);
    QVERIFY(curve("Profit today"));
}

void tst_positiondesk::brokenFileIsKeptAside()
{
    DeskTest::write(file(), "{ \"positions\": ");
    m_window = std::make_unique<DeskWindow>(*m_data, DeskView::Position);
    const QString problem = m_window->position()->setFile(file());
    QVERIFY2(problem.contains(file()), qPrintable(problem));
    QVERIFY(QFile::exists(file() + QStringLiteral(".broken")));
    m_window->showSeries(m_future, SeriesFacts());
    model().addLeg();
    const QVector<Leg> legs = model().legs();
    open(DeskView::Position);
    QCOMPARE(model().legs(), legs);
}

void tst_positiondesk::ofEachUnderlying()
{
    model().addLeg();
    const int other = m_data->import(DeskTest::chain(QStringLiteral("OTHER")), 0);
    m_window->showSeries(other, SeriesFacts());
    QCOMPARE(model().rowCount(), 0);
    model().addLeg();
    model().addLeg();
    m_window->showSeries(m_future, SeriesFacts());
    QCOMPARE(model().rowCount(), 1);
    m_window->showSeries(other, SeriesFacts());
    QCOMPARE(model().rowCount(), 2);
}

void tst_positiondesk::withoutSeriesThereIsNoTable()
{
    model().addLeg();
    const QVector<Leg> legs = model().legs();
    LiveTable::removeSeries(m_future);
    QTRY_COMPARE(model().rowCount(), 0);
    QVERIFY(!m_window->shownSeries());
    action("Add leg")->trigger();
    QCOMPARE(model().rowCount(), 0);
    QCOMPARE(Position::PositionFile(file()).legs(QStringLiteral("TEST")), legs);
    QVERIFY(plot().itemList(QwtPlotItem::Rtti_PlotTextLabel).isEmpty());
}

void tst_positiondesk::actions()
{
    for (const char* const text : {"Add leg", "Remove leg", "Remove all", "Table", "Edit the table"}) {
        const QAction* const each = action(text);
        QVERIFY2(!each->shortcut().isEmpty() && !each->statusTip().isEmpty(), text);
    }
    model().addLeg();
    model().addLeg();
    auto* const table = m_window->findChild<QTableView*>();
    table->setCurrentIndex(model().index(0, 0));
    set(1, LegModel::Quantity, QStringLiteral("5"));
    action("Remove leg")->trigger();
    QCOMPARE(model().rowCount(), 1);
    QCOMPARE(model().legs()[0].quantity, 5);
    action("Remove all")->trigger();
    QCOMPARE(model().rowCount(), 0);
    action("Remove leg")->trigger();
    QCOMPARE(model().rowCount(), 0);
}

PLOT2D_TEST_MAIN(tst_positiondesk)
#include "tst_positiondesk.moc"
