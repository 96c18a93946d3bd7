#include "flow/legendplot.h"
#include "support/testmain.h"

#include <qwt_plot_marker.h>

#include <memory>

namespace {

const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");

}

/// The icons of PriceBased2dPlotLegend and the styles that select them.
class tst_legendicons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void resetIcons();
    void styles_data();
    void styles();
    void stylesOfMarkedCurves();
    void styleWithoutAnIcon();
    void resetIconOfNoCurve();
    void setCheckBoxIcon();

private:
    std::unique_ptr<LegendPlot> m_host;
};

void tst_legendicons::initTestCase()
{
    TestHost::createSecurities();
    TestHost::createBoards();
}

void tst_legendicons::cleanupTestCase()
{
    TestHost::dropSecurities();
    TestHost::dropBoards();
}

void tst_legendicons::init()
{
    m_host = std::make_unique<LegendPlot>();
}

void tst_legendicons::cleanup()
{
    m_host.reset();
}

void tst_legendicons::resetIcons()
{
    const QMap<int, QPixmap> icons = m_host->legend->resetIcons();
    QCOMPARE(icons.keys(), QList<int>({QwtSymbol::Rect, QwtSymbol::DTriangle, QwtSymbol::UTriangle}));
    const auto pixel = [&icons](int style, int x, int y) { return icons[style].toImage().pixelColor(x, y); };
    const QColor gray(Qt::gray);
    const QColor white(Qt::white);
    for (const QPixmap& icon : icons) {
        QCOMPARE(icon.size(), QSize(50, 13));
        QCOMPARE(icon.toImage().pixelColor(0, 0), white);
        QCOMPARE(icon.toImage().pixelColor(49, 12), white);
        QCOMPARE(icon.toImage().pixelColor(25, 6), gray);
    }
    QCOMPARE(pixel(QwtSymbol::DTriangle, 25, 11), gray);
    QCOMPARE(pixel(QwtSymbol::DTriangle, 25, 1), white);
    QCOMPARE(pixel(QwtSymbol::DTriangle, 22, 4), gray);
    QCOMPARE(pixel(QwtSymbol::DTriangle, 22, 11), white);
    QCOMPARE(pixel(QwtSymbol::UTriangle, 25, 1), gray);
    QCOMPARE(pixel(QwtSymbol::UTriangle, 25, 11), white);
    QCOMPARE(pixel(QwtSymbol::UTriangle, 22, 8), gray);
    QCOMPARE(pixel(QwtSymbol::UTriangle, 22, 1), white);
    QCOMPARE(pixel(QwtSymbol::Rect, 2, 6), gray);
    QCOMPARE(pixel(QwtSymbol::Rect, 47, 6), gray);
    QCOMPARE(pixel(QwtSymbol::Rect, 25, 3), white);
    QCOMPARE(pixel(QwtSymbol::Rect, 25, 9), white);
}

void tst_legendicons::styles_data()
{
    QTest::addColumn<int>("style");
    for (const int style : {-1, 0, 1, 4, 5, 14})
        QTest::addRow("%d", style) << style;
}

void tst_legendicons::styles()
{
    QFETCH(int, style);
    QCOMPARE(m_host->legend->getStyle(m_host->add(one, 9, static_cast<QwtSymbol::Style>(style))), style);
}

void tst_legendicons::stylesOfMarkedCurves()
{
    QCOMPARE(m_host->legend->getStyle(nullptr), -1);
    auto* plain = m_host->add(one);
    plain->setSymbol(nullptr);
    QCOMPARE(m_host->legend->getStyle(plain), -1);

    auto* marked = m_host->add(two, 13);
    QCOMPARE(m_host->legend->getStyle(marked), 1);
    const QImage own = m_host->icon(marked);
    m_host->legend->setResetIcon(m_host->label(marked));
    QCOMPARE(m_host->icon(marked), m_host->legend->resetIcons()[1].toImage());
    QVERIFY(m_host->icon(marked) != own);
    for (const auto style : {QwtSymbol::UTriangle, QwtSymbol::Ellipse}) {
        auto* marker = new QwtPlotMarker;
        marker->setSymbol(new QwtSymbol(style));
        marker->attach(&m_host->plot);
        QCOMPARE(m_host->legend->getStyle(marked), int(QwtSymbol::UTriangle));
    }
}

void tst_legendicons::styleWithoutAnIcon()
{
    const auto* curve = m_host->add(one, 9, QwtSymbol::Star1);
    const QImage own = m_host->icon(curve);
    m_host->checkBox(curve)->setChecked(false);
    QCOMPARE(m_host->icon(curve), own);
    QCOMPARE(m_host->color(curve), QColor(Qt::darkGray));
    // The look-up leaves an empty icon for the style.
    QVERIFY(m_host->legend->resetIcons().contains(QwtSymbol::Star1));
    QVERIFY(m_host->legend->resetIcons().value(QwtSymbol::Star1).isNull());
    QCOMPARE(m_host->legend->resetIcons().size(), 4);
    m_host->checkBox(curve)->setChecked(true);
    QCOMPARE(m_host->icon(curve), own);
}

void tst_legendicons::resetIconOfNoCurve()
{
    m_host->legend->setResetIcon(nullptr);
    QwtLegendLabel label;
    label.setText(two);
    label.setIcon(QPixmap(3, 4));
    m_host->add(one);
    m_host->legend->setResetIcon(&label);
    QCOMPARE(label.icon().size(), QSize(3, 4));
}

void tst_legendicons::setCheckBoxIcon()
{
    const auto* curve = m_host->add(one);
    const auto* other = m_host->add(two);
    const QImage own = m_host->icon(other);
    QPixmap icon(20, 10);
    icon.fill(Qt::blue);
    m_host->legend->setCheckBoxIcon(one, icon);
    QCOMPARE(m_host->icon(curve), icon.toImage());
    m_host->legend->setCheckBoxIcon(one, QPixmap());
    QCOMPARE(m_host->icon(curve), icon.toImage());
    m_host->checkBox(curve)->setChecked(false);
    m_host->legend->setCheckBoxIcon(one, icon);
    QCOMPARE(m_host->icon(curve), icon.toImage());
    QCOMPARE(m_host->icon(other), own);
    m_host->legend->setCheckBoxIcon(QStringLiteral("three"), icon);
}

PLOT2D_TEST_MAIN(tst_legendicons)
#include "tst_legendicons.moc"
