#include "flow/shownplot.h"
#include "gui/hand.h"
#include "gui/hostplot.h"
#include "gui/screenmain.h"

#include <qwt_plot_layout.h>

namespace {

enum class Place { Canvas, Prices, Values, Corner };
enum class Scale { Kept, Zoomed, Fitted };

const QString forward = QStringLiteral("click 4");
const QString back = QStringLiteral("click 5");

QwtInterval zoomed(const QwtInterval& range, double centre, double factor)
{
    return QwtInterval(
        centre - (centre - range.minValue()) * factor, centre + (range.maxValue() - centre) * factor);
}

}

Q_DECLARE_METATYPE(Place)
Q_DECLARE_METATYPE(Scale)

/// The wheel of a real pointer over a plot that shows the prices 400 to 600 and the values 40 to 60.
class tst_wheelonscreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void zooms_data();
    void zooms();
    void sideways_data();
    void sideways();
    void severalNotches();
    void endsOfTheData_data();
    void endsOfTheData();
    void goesByTheCursor();
    void refused_data();
    void refused();

private:
    QPoint placeOf(Place place) const;
    /// The price and the value that a zoom with the cursor there keeps in place.
    QPointF centre(Place place) const;
    bool turns(Place place, const QString& turn);
    QwtInterval expected(int axis, Scale scale, double centre, double factor);

    QwtInterval prices() { return m_plot->range(QwtPlot::xBottom); }
    QwtInterval values() { return m_plot->range(QwtPlot::yLeft); }

    std::unique_ptr<Hand> m_hand;
    std::unique_ptr<HostPlot> m_plot;
    std::unique_ptr<QSignalSpy> m_labels;
    std::unique_ptr<QSignalSpy> m_autoScale;
    const QwtInterval m_prices{400.0, 600.0};
    const QwtInterval m_values{40.0, 60.0};
};

void tst_wheelonscreen::initTestCase()
{
    openMarket();
    m_hand = std::make_unique<Hand>();
}

void tst_wheelonscreen::cleanupTestCase()
{
    m_hand.reset();
    closeMarket();
}

void tst_wheelonscreen::init()
{
    m_plot = std::make_unique<HostPlot>();
    QVERIFY(m_plot->comesUp());
    QVERIFY(m_hand->movesTo(m_plot.get(), QPoint(-20, -20)));
    m_labels = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(updateAxisLabels()));
    m_autoScale = std::make_unique<QSignalSpy>(m_plot.get(), SIGNAL(autoScaleEnabled(bool)));
}

void tst_wheelonscreen::cleanup()
{
    m_plot.reset();
}

QPoint tst_wheelonscreen::placeOf(Place place) const
{
    const QwtPlotLayout* layout = m_plot->plotLayout();
    switch (place) {
    case Place::Canvas:
        return layout->canvasRect().center().toPoint() + QPoint(70, -50);
    case Place::Prices:
        return layout->scaleRect(QwtPlot::xBottom).center().toPoint() + QPoint(60, 0);
    case Place::Values:
        return layout->scaleRect(QwtPlot::yLeft).center().toPoint() + QPoint(0, 40);
    case Place::Corner:
        break;
    }
    return QPoint(2, m_plot->height() - 3);
}

QPointF tst_wheelonscreen::centre(Place place) const
{
    QPoint position = placeOf(place);
    if (place == Place::Prices)
        position = m_plot->axisWidget(QwtPlot::xBottom)->mapFrom(m_plot.get(), position);
    else if (place == Place::Values)
        position = m_plot->axisWidget(QwtPlot::yLeft)->mapFrom(m_plot.get(), position);
    return QPointF(m_plot->canvasMap(QwtPlot::xBottom).invTransform(position.x()),
        m_plot->canvasMap(QwtPlot::yLeft).invTransform(position.y()));
}

bool tst_wheelonscreen::turns(Place place, const QString& turn)
{
    return m_hand->movesTo(m_plot.get(), placeOf(place)) && m_hand->does({turn});
}

QwtInterval tst_wheelonscreen::expected(int axis, Scale scale, double centre, double factor)
{
    if (scale == Scale::Fitted)
        return m_plot->valuesWithin(prices());
    const QwtInterval before = axis == QwtPlot::xBottom ? m_prices : m_values;
    return scale == Scale::Zoomed ? zoomed(before, centre, factor) : before;
}

void tst_wheelonscreen::zooms_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<QString>("modifiers");
    QTest::addColumn<QString>("turn");
    QTest::addColumn<double>("factor");
    QTest::addColumn<Scale>("priceScale");
    QTest::addColumn<Scale>("valueScale");

    struct Row {
        const char* name;
        Place place;
        const char* modifiers;
        Scale priceScale;
        Scale valueScale;
    };
    const Row rows[] = {
        {"canvas", Place::Canvas, "", Scale::Zoomed, Scale::Zoomed},
        {"canvas, Shift", Place::Canvas, "shift", Scale::Kept, Scale::Zoomed},
        {"canvas, Control", Place::Canvas, "ctrl", Scale::Zoomed, Scale::Fitted},
        {"canvas, both", Place::Canvas, "shift ctrl", Scale::Zoomed, Scale::Zoomed},
        {"prices", Place::Prices, "", Scale::Zoomed, Scale::Fitted},
        {"prices, Shift", Place::Prices, "shift", Scale::Zoomed, Scale::Fitted},
        {"prices, Control", Place::Prices, "ctrl", Scale::Zoomed, Scale::Fitted},
        {"prices, both", Place::Prices, "shift ctrl", Scale::Zoomed, Scale::Fitted},
        {"values", Place::Values, "", Scale::Kept, Scale::Zoomed},
        {"values, Shift", Place::Values, "shift", Scale::Kept, Scale::Zoomed},
        {"values, Control", Place::Values, "ctrl", Scale::Kept, Scale::Zoomed},
        {"values, both", Place::Values, "shift ctrl", Scale::Kept, Scale::Zoomed},
    };
    for (const Row& row : rows) {
        QTest::addRow("%s, in", row.name)
            << row.place << row.modifiers << forward << 0.9 << row.priceScale << row.valueScale;
        QTest::addRow("%s, out", row.name)
            << row.place << row.modifiers << back << 1.1 << row.priceScale << row.valueScale;
    }
}

void tst_wheelonscreen::zooms()
{
    QFETCH(Place, place);
    QFETCH(QString, modifiers);
    QFETCH(QString, turn);
    QFETCH(double, factor);
    QFETCH(Scale, priceScale);
    QFETCH(Scale, valueScale);
    const QPointF kept = centre(place);
    QStringList actions{turn};
    const QStringList keys = modifiers.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& key : keys) {
        actions.prepend(QStringLiteral("keydown ") + key);
        actions.append(QStringLiteral("keyup ") + key);
    }
    QVERIFY(m_hand->movesTo(m_plot.get(), placeOf(place)));
    QVERIFY(m_hand->does(actions));

    COMPARE_RANGES(prices(), expected(QwtPlot::xBottom, priceScale, kept.x(), factor));
    COMPARE_RANGES(values(), expected(QwtPlot::yLeft, valueScale, kept.y(), factor));
    QCOMPARE(m_labels->count(), 1);
    // What is fitted to the curves goes on being fitted.
    const bool fitted = valueScale == Scale::Fitted;
    QCOMPARE(m_autoScale->count(), fitted ? 0 : 1);
    QCOMPARE(m_plot->autoScaleEnabled(), fitted);
}

void tst_wheelonscreen::sideways_data()
{
    QTest::addColumn<QStringList>("turn");
    QTest::addColumn<double>("factor");
    QTest::newRow("left") << QStringList("click 6") << 0.9;
    QTest::newRow("right") << QStringList("click 7") << 1.1;
    QTest::newRow("Alt, forward") << QStringList({"keydown alt", "click 4", "keyup alt"}) << 0.9;
    QTest::newRow("Alt, back") << QStringList({"keydown alt", "click 5", "keyup alt"}) << 1.1;
}

/// A wheel's second axis, onto which Alt turns the first, zooms as well.
void tst_wheelonscreen::sideways()
{
    QFETCH(QStringList, turn);
    QFETCH(double, factor);
    const QPointF kept = centre(Place::Canvas);
    QVERIFY(m_hand->movesTo(m_plot.get(), placeOf(Place::Canvas)));
    QVERIFY(m_hand->does(turn));
    COMPARE_RANGES(prices(), zoomed(m_prices, kept.x(), factor));
    COMPARE_RANGES(values(), zoomed(m_values, kept.y(), factor));
}

void tst_wheelonscreen::severalNotches()
{
    // The server reports each notch on its own, however fast they come.
    QVERIFY(turns(Place::Canvas, QStringLiteral("click --repeat 5 --delay 0 4")));
    QCOMPARE(m_labels->count(), 5);
    QVERIFY(std::abs(prices().width() / m_prices.width() - std::pow(0.9, 5)) < 1e-9);
    QVERIFY(std::abs(values().width() / m_values.width() - std::pow(0.9, 5)) < 1e-9);
    QVERIFY(m_hand->does({QStringLiteral("click --repeat 3 --delay 0 5")}));
    QCOMPARE(m_labels->count(), 8);
    QVERIFY(std::abs(prices().width() / m_prices.width() - std::pow(0.9, 5) * std::pow(1.1, 3)) < 1e-9);
    QCOMPARE(m_autoScale->count(), 1);
}

void tst_wheelonscreen::endsOfTheData_data()
{
    QTest::addColumn<QwtInterval>("before");
    QTest::addColumn<QwtInterval>("after");
    QTest::newRow("left end in view") << QwtInterval(-50.0, 350.0) << QwtInterval(-50.0, 390.0);
    QTest::newRow("right end in view") << QwtInterval(650.0, 1050.0) << QwtInterval(610.0, 1050.0);
    QTest::newRow("all in view") << QwtInterval(-50.0, 1050.0) << QwtInterval(-50.0, 1050.0);
}

void tst_wheelonscreen::endsOfTheData()
{
    QFETCH(QwtInterval, before);
    QFETCH(QwtInterval, after);
    m_plot->look(before, m_values);
    QVERIFY(turns(Place::Prices, back));
    COMPARE_RANGES(prices(), after);
    QCOMPARE(m_labels->count(), 1);
}

/// A wheel event that waited in the queue counts where the cursor is by now.
void tst_wheelonscreen::goesByTheCursor()
{
    const QPointF kept = centre(Place::Prices);
    QVERIFY(m_hand->does({Hand::moveAction(m_plot.get(), placeOf(Place::Canvas)), forward,
        Hand::moveAction(m_plot.get(), placeOf(Place::Prices))}));
    COMPARE_RANGES(prices(), zoomed(m_prices, kept.x(), 0.9));
    COMPARE_RANGES(values(), m_plot->valuesWithin(prices()));
    QCOMPARE(m_labels->count(), 1);
}

void tst_wheelonscreen::refused_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("canvas, disabled") << Place::Canvas << false;
    QTest::newRow("prices, disabled") << Place::Prices << false;
    QTest::newRow("values, disabled") << Place::Values << false;
    QTest::newRow("beside scales and canvas") << Place::Corner << true;
}

void tst_wheelonscreen::refused()
{
    QFETCH(Place, place);
    QFETCH(bool, enabled);
    QVERIFY(turns(Place::Canvas, forward));
    const QwtInterval pricesBefore = prices();
    const QwtInterval valuesBefore = values();
    m_labels->clear();
    m_plot->setZoomEnabled(enabled);
    QVERIFY(turns(place, forward));
    QVERIFY(turns(place, back));
    QCOMPARE(prices(), pricesBefore);
    QCOMPARE(values(), valuesBefore);
    QCOMPARE(m_labels->count(), 0);
}

PLOT2D_SCREEN_TEST_MAIN(tst_wheelonscreen)
#include "tst_wheelonscreen.moc"
