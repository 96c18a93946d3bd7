#include "desktest.h"
#include "support/childrun.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskplot.h>
#include <window/readoutitem.h>

#include <plot2d/pricebased2dplotcurve.h>
#include <plot2d/pricebased2dplotpicker.h>

#include <QLocale>

#include <qwt_scale_map.h>

/// The read-out as users of other locales see it. Each row runs in a child process that has the row's locale
/// for its system's.
class tst_readoutlocales : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void readsVolatilities_data();
    void readsVolatilities();
    void readsValues_data();
    void readsValues();

private:
    void showSeries(DeskView view, AxisMode mode);
    // The texts of a point that is put onto the plot, at the mouse and at the arrow keys.
    QStringList textsOf(const QPointF& point);

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskPlot> m_plot;
};

namespace {

constexpr double quote = 2000.0;
constexpr double lowestPrice = 1000.0;
constexpr double highestPrice = 4000.0;

// The test chain with all prices twenty times as high.
OptionChain highChain()
{
    constexpr double factor = 20.0;
    OptionChain chain = DeskTest::chain();
    for (OptionQuote& option : chain.series.first().quotes) {
        option.strike = decimal::fromDouble(option.strike.toDouble() * factor, 2);
        option.settlement = decimal::fromDouble(option.settlement->toDouble() * factor, 2);
    }
    return chain;
}

// Whether this is the child; otherwise the row has been run in one.
bool runInLocale(const QString& locale)
{
    if (TestSupport::isChild())
        return QTest::qCompare(
            QLocale::system().name(), locale, "the system's locale", "the row's", __FILE__, __LINE__);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), locale);
    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
    QTest::qVerify(run.passed(), "run.passed()", run.output.constData(), __FILE__, __LINE__);
    return false;
}

void addRow(const char* name, const char* locale, AxisMode mode, const QPointF& point, const char16_t* text)
{
    QTest::newRow(name) << QString::fromLatin1(locale) << int(mode) << point << QString::fromUtf16(text);
}

void addColumns()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QString>("text");
}

}

void tst_readoutlocales::cleanup()
{
    m_plot.reset();
    m_data.reset();
}

void tst_readoutlocales::showSeries(DeskView view, AxisMode mode)
{
    m_data = std::make_unique<DeskData>(QString());
    const int future = m_data->import(highChain(), 0);
    SeriesFacts given;
    given.forward = quote;
    m_plot = std::make_unique<DeskPlot>();
    m_plot->showSeries(future, m_data->show(future, given), view);
    m_plot->setAxisMode(mode);
    m_plot->setAttribute(Qt::WA_DontShowOnScreen);
    m_plot->resize(1000, 600);
    m_plot->show();
    QCoreApplication::processEvents();
}

QStringList tst_readoutlocales::textsOf(const QPointF& point)
{
    auto* curve = new PriceBased2dPlotCurve(m_plot.get(), QStringLiteral("Test"));
    curve->setDataType(10);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setSamples(QVector<QPointF>{point, point + QPointF(highestPrice, 0.0)});
    curve->attach(m_plot.get());
    m_plot->setAxisScale(QwtPlot::xBottom, lowestPrice, highestPrice, 0.0);
    m_plot->setAxisScale(QwtPlot::yLeft, 0.0, 2.0 * point.y(), 0.0);
    m_plot->replot();

    const QPointF position(m_plot->canvasMap(QwtPlot::xBottom).transform(point.x()),
        m_plot->canvasMap(QwtPlot::yLeft).transform(point.y()));
    QMouseEvent move(
        QEvent::MouseMove, position, position, QCursor::pos(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_plot->canvas(), &move);
    const QString atMouse = m_plot->findChild<PriceBased2dPlotPicker*>()->trackerText(QPoint()).text();
    QTest::keyClick(m_plot->canvas(), Qt::Key_F2);
    const QwtPlotItemList items = m_plot->itemList(QwtPlotItem::Rtti_PlotUserItem + 1);
    const auto* item = dynamic_cast<ReadOutItem*>(items.value(0));
    return {atMouse, item ? item->text().text() : QString()};
}

void tst_readoutlocales::readsVolatilities_data()
{
    addColumns();
    const QPointF above(3456.75, 0.31254);
    const QPointF below(1234.5, 0.2);
    addRow("C, price above", "C", AxisMode::Price, above,
        u"Test\nStrike 3,456.75, +1,456.75 from the quote\n31.25%");
    addRow("C, percent below", "C", AxisMode::PercentOfQuote, below,
        u"Test\nStrike 1,234.5, -38.275% from the quote\n20%");

    addRow("German, price above", "de_DE", AxisMode::Price, above,
        u"Test\nStrike 3.456,75, +1.456,75 from the quote\n31,25%");
    addRow("German, price below", "de_DE", AxisMode::Price, below,
        u"Test\nStrike 1.234,5, -765,5 from the quote\n20%");
    addRow("German, points above", "de_DE", AxisMode::PointsFromQuote, above,
        u"Test\nStrike 3.456,75, +1.456,75 from the quote\n31,25%");
    addRow("German, percent above", "de_DE", AxisMode::PercentOfQuote, above,
        u"Test\nStrike 3.456,75, +72,8375% from the quote\n31,25%");

    // A narrow no-break space parts the thousands.
    addRow("French, price above", "fr_FR", AxisMode::Price, above,
        u"Test\nStrike 3\u202f456,75, +1\u202f456,75 from the quote\n31,25%");
    addRow("French, points below", "fr_FR", AxisMode::PointsFromQuote, below,
        u"Test\nStrike 1\u202f234,5, -765,5 from the quote\n20%");
    addRow("French, percent below", "fr_FR", AxisMode::PercentOfQuote, below,
        u"Test\nStrike 1\u202f234,5, -38,275% from the quote\n20%");
    addRow("French, at the quote", "fr_FR", AxisMode::PercentOfQuote, {quote, 0.2},
        u"Test\nStrike 2\u202f000, 0% from the quote\n20%");

    // Behind the strike a mark sees to it that the distance stands to its right.
    addRow("Arabic, price above", "ar_EG", AxisMode::Price, above,
        u"Test\nStrike \u0663\u066c\u0664\u0665\u0666\u066b\u0667\u0665\u200e, "
        u"+\u0661\u066c\u0664\u0665\u0666\u066b\u0667\u0665 from the quote\n\u0663\u0661\u066b\u0662\u0665%");
    addRow("Arabic, points below", "ar_EG", AxisMode::PointsFromQuote, below,
        u"Test\nStrike \u0661\u066c\u0662\u0663\u0664\u066b\u0665\u200e, "
        u"-\u0667\u0666\u0665\u066b\u0665 from the quote\n\u0662\u0660%");
    addRow("Arabic, percent below", "ar_EG", AxisMode::PercentOfQuote, below,
        u"Test\nStrike \u0661\u066c\u0662\u0663\u0664\u066b\u0665\u200e, "
        u"-\u0663\u0668\u066b\u0662\u0667\u0665% from the quote\n\u0662\u0660%");
    addRow("Arabic, at the quote", "ar_EG", AxisMode::Price, {quote, 0.2},
        u"Test\nStrike \u0662\u066c\u0660\u0660\u0660\u200e, \u0660 from the quote\n\u0662\u0660%");
}

void tst_readoutlocales::readsVolatilities()
{
    QFETCH(QString, locale);
    QFETCH(int, mode);
    QFETCH(QPointF, point);
    QFETCH(QString, text);
    if (!runInLocale(locale))
        return;
    showSeries(DeskView::Volatility, AxisMode(mode));
    QCOMPARE(textsOf(point), (QStringList{text, text}));
}

void tst_readoutlocales::readsValues_data()
{
    addColumns();
    const QPointF point(2000.01, 1234.5678);
    addRow("C", "C", AxisMode::Price, point, u"Test\nStrike 2,000.01, +0.01 from the quote\n1,234.568");
    addRow("German", "de_DE", AxisMode::PercentOfQuote, point,
        u"Test\nStrike 2.000,01, +0,0005% from the quote\n1.234,568");
    addRow("French", "fr_FR", AxisMode::PointsFromQuote, point,
        u"Test\nStrike 2\u202f000,01, +0,01 from the quote\n1\u202f234,568");
    addRow("Arabic", "ar_EG", AxisMode::Price, point,
        u"Test\nStrike \u0662\u066c\u0660\u0660\u0660\u066b\u0660\u0661\u200e, "
        u"+\u0660\u066b\u0660\u0661 from the quote\n\u0661\u066c\u0662\u0663\u0664\u066b\u0665\u0666\u0668");
}

void tst_readoutlocales::readsValues()
{
    QFETCH(QString, locale);
    QFETCH(int, mode);
    QFETCH(QPointF, point);
    QFETCH(QString, text);
    if (!runInLocale(locale))
        return;
    showSeries(DeskView::Value, AxisMode(mode));
    QCOMPARE(textsOf(point), (QStringList{text, text}));
}

PLOT2D_TEST_MAIN(tst_readoutlocales)
#include "tst_readoutlocales.moc"
