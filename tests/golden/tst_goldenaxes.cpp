#include "goldenimage.h"
#include "support/childrun.h"
#include "support/testhost.h"
#include "support/testmain.h"
#include "support/testplot.h"

#include <basic_views/conversion.h>
#include <plot2d/pricebased2dplotscaledraw.h>

#include <qwt_scale_widget.h>

namespace {

constexpr int fontPoints = 9;

class PointsFrom : public Conversion {
public:
    explicit PointsFrom(double price)
        : m_price(price)
    {
    }
    double forward(double value) const override { return value - m_price; }
    double backward(double value) const override { return value + m_price; }

private:
    double m_price;
};

/// What is to be seen on an axis.
struct Scene {
    int axis = QwtPlot::xBottom;
    double lower = 0.0;
    double upper = 0.0;
    QSize size = QSize(500, 200);
    double quote = -1.0;
    /// 0 for none.
    double rescaleFactor = 0.0;
    /// Whether labels are relative to the rescale factor, with a unit and a plus sign.
    bool converted = false;
    int maxMajor = 8;
};

void apply(const Scene& scene, TestPlot& plot)
{
    plot.resize(scene.size);
    for (const int axis : {int(QwtPlot::xBottom), int(QwtPlot::yLeft)})
        plot.setAxisFont(axis, QApplication::font());
    plot.setAxisMaxMajor(scene.axis, scene.maxMajor);
    plot.setAxisScale(scene.axis, scene.lower, scene.upper, 0.0);
    plot.setRescaleFactor(decimal::fromDouble(scene.rescaleFactor, 5));
    if (scene.quote > 0.0) {
        plot.setCurKotirValue(scene.quote);
        plot.setCurKotirEnabled(true);
    }
    auto* draw = dynamic_cast<PriceBased2dPlotScaleDraw*>(plot.axisScaleDraw(scene.axis));
    QVERIFY(draw);
    if (scene.converted) {
        draw->setConvertionObject(new PointsFrom(scene.rescaleFactor));
        draw->setConversionMethod(&Conversion::forward);
        draw->setMetricUnit(QStringLiteral("%"));
        draw->setPlusSignShown(true);
        draw->setConversionEnabled(true);
    }
}

QImage picture(const Scene& scene)
{
    TestPlot plot;
    apply(scene, plot);
    plot.show();
    if (!QTest::qWaitForWindowExposed(&plot))
        return QImage();
    plot.replot();
    QCoreApplication::processEvents();
    plot.updateScaleLabels();
    plot.updateAxisWidgets();
    return plot.axisWidget(scene.axis)->grab().toImage();
}

Scene prices()
{
    Scene scene;
    scene.lower = 80.0;
    scene.upper = 110.0;
    scene.quote = 92.85;
    return scene;
}

}

Q_DECLARE_METATYPE(Scene)

class tst_goldenaxes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void axis_data();
    void axis();
};

void tst_goldenaxes::init()
{
    QApplication::setFont(GoldenImage::font(fontPoints));
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_goldenaxes::axis_data()
{
    QTest::addColumn<Scene>("scene");
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QByteArray>("pixelRatio");

    const QByteArray english("en_US.UTF-8");
    const QByteArray one("1");
    Scene scene = prices();
    QTest::newRow("quote_in_the_middle") << scene << english << one;
    QTest::newRow("quote_in_the_middle_ratio2") << scene << english << QByteArray("2");
    scene.quote = 80.2;
    QTest::newRow("quote_at_the_edge") << scene << english << one;
    scene.quote = -1.0;
    QTest::newRow("no_quote") << scene << english << one;

    scene = prices();
    scene.size.setWidth(170);
    scene.maxMajor = 40;
    QTest::newRow("thinned") << scene << english << one;
    QTest::newRow("thinned_ratio2") << scene << english << QByteArray("2");

    scene = prices();
    scene.rescaleFactor = 92.85;
    QTest::newRow("anchored") << scene << english << one;
    scene.converted = true;
    QTest::newRow("converted_with_unit_and_plus_sign") << scene << english << one;

    scene = prices();
    scene.lower = 1234567.5;
    scene.upper = 1234571.0;
    scene.quote = 1234569.25;
    scene.size.setWidth(700);
    for (const char* locale : {"en_US", "de_DE", "fr_CH", "ar_EG"}) {
        const QByteArray name = QByteArray("large_prices_") + locale;
        QTest::newRow(name.constData()) << scene << QByteArray(locale) + ".UTF-8" << one;
    }

    scene = Scene();
    scene.axis = QwtPlot::yLeft;
    scene.lower = -0.25;
    scene.upper = 0.45;
    scene.size = QSize(300, 320);
    QTest::newRow("left") << scene << english << one;
    QTest::newRow("left_ratio2") << scene << english << QByteArray("2");
    scene.maxMajor = 40;
    QTest::newRow("left_is_never_thinned") << scene << english << one;
}

void tst_goldenaxes::axis()
{
    QFETCH(const Scene, scene);
    QFETCH(const QByteArray, locale);
    QFETCH(const QByteArray, pixelRatio);
    if (!TestSupport::isChild()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("LANGUAGE"));
        environment.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(pixelRatio));
        environment.remove(QStringLiteral("QT_FONT_DPI"));
        const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    if (const QString other = GoldenImage::otherVersions(); !other.isEmpty())
        QSKIP(qPrintable(other));
    const QString difference = GoldenImage::difference(picture(scene), name);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

PLOT2D_TEST_MAIN(tst_goldenaxes)
#include "tst_goldenaxes.moc"
