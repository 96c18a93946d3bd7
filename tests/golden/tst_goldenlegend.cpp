#include "flow/legendplot.h"
#include "goldenimage.h"
#include "support/childrun.h"
#include "support/testmain.h"

#include <QStyle>

namespace {

constexpr int symbolSize = 9;

/// A curve as a host draws it: a coloured line with a symbol of a style.
PriceBased2dPlotCurve* addDrawn(LegendPlot& host, QwtSymbol::Style style)
{
    PriceBased2dPlotCurve* curve = host.add(QStringLiteral("Volatility, 5 %"), 9, style);
    curve->setPen(QPen(QColor(0, 114, 178), 2.0));
    curve->setSymbol(
        new QwtSymbol(style, QBrush(QColor(230, 159, 0)), QPen(Qt::black), QSize(symbolSize, symbolSize)));
    curve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
    curve->setLegendIconSize(QSize(40, 13));
    return curve;
}

}

/// The legend's placeholder icons and entries against golden pictures.
class tst_goldenlegend : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void resetIcon_data();
    void resetIcon();
    void entry_data();
    void entry();
};

void tst_goldenlegend::init()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(QApplication::style()->standardPalette());
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_goldenlegend::resetIcon_data()
{
    QTest::addColumn<int>("style");
    QTest::newRow("legend_icon_line") << int(QwtSymbol::Rect);
    QTest::newRow("legend_icon_down") << int(QwtSymbol::DTriangle);
    QTest::newRow("legend_icon_up") << int(QwtSymbol::UTriangle);
}

void tst_goldenlegend::resetIcon()
{
    QFETCH(const int, style);
    const LegendPlot host;
    if (const QString other = GoldenImage::otherVersions(); !other.isEmpty())
        QSKIP(qPrintable(other));
    const QString difference = GoldenImage::difference(
        host.legend->resetIcons().value(style).toImage(), QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_goldenlegend::entry_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QFont>("font");
    const QFont sans = GoldenImage::font(9);
    const QFont serif = GoldenImage::font(14, QStringLiteral("DejaVuSerif.ttf"));
    QTest::newRow("legend_line_sans") << int(QwtSymbol::Rect) << sans;
    QTest::newRow("legend_line_serif") << int(QwtSymbol::Rect) << serif;
    QTest::newRow("legend_down_sans") << int(QwtSymbol::DTriangle) << sans;
    QTest::newRow("legend_down_serif") << int(QwtSymbol::DTriangle) << serif;
    QTest::newRow("legend_up_sans") << int(QwtSymbol::UTriangle) << sans;
    QTest::newRow("legend_up_serif") << int(QwtSymbol::UTriangle) << serif;
    QTest::newRow("legend_without_placeholder_sans") << int(QwtSymbol::Diamond) << sans;
}

void tst_goldenlegend::entry()
{
    QFETCH(const int, style);
    QFETCH(const QFont, font);
    if (const QString other = GoldenImage::otherVersions(); !other.isEmpty())
        QSKIP(qPrintable(other));
    if (!TestSupport::isChild()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("1"));
        environment.remove(QStringLiteral("QT_FONT_DPI"));
        const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    QApplication::setFont(font);
    LegendPlot host;
    const PriceBased2dPlotCurve* curve = addDrawn(host, QwtSymbol::Style(style));
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const auto picture = [&] { return host.entry(curve)->grab().toImage(); };

    const QImage checked = picture();
    QString difference = GoldenImage::difference(checked, name + QStringLiteral("_checked"));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    host.legend->setCheckBoxChecked(curve->title().text(), false);
    difference = GoldenImage::difference(picture(), name + QStringLiteral("_unchecked"));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    host.legend->setCheckBoxChecked(curve->title().text(), true);
    QCOMPARE(picture(), checked);
}

PLOT2D_TEST_MAIN(tst_goldenlegend)
#include "tst_goldenlegend.moc"
