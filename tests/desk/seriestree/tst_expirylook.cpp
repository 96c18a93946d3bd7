#include "support/testmain.h"

#include <seriestree/expirylook.h>
#include <window/curvelook.h>

#include <cmath>

/// The colours and line styles of the expiries beside the chosen one.
class tst_expirylook : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void allDiffer();
    void beginsAgain();
    void colorsAreApart();
    void noColorIsOfTheChosenSeries();
    void standsOutOnWhite();
    void swatchShowsTheLine_data();
    void swatchShowsTheLine();
};

namespace {

const QColor chosenSmile(0x00, 0x72, 0xb2);

int distance(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

double luminance(const QColor& color)
{
    const auto linear
        = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}

void tst_expirylook::allDiffer()
{
    QVERIFY(ExpiryLook::count >= 10);
    for (int i = 0; i < ExpiryLook::count; ++i) {
        for (int j = 0; j < i; ++j) {
            const QPen a = ExpiryLook::pen(i);
            const QPen b = ExpiryLook::pen(j);
            QVERIFY2(a.color() != b.color() || a.style() != b.style(),
                qPrintable(QStringLiteral("%1 and %2").arg(j).arg(i)));
        }
    }
}

void tst_expirylook::beginsAgain()
{
    QCOMPARE(ExpiryLook::pen(ExpiryLook::count), ExpiryLook::pen(0));
    QCOMPARE(ExpiryLook::pen(3 * ExpiryLook::count + 5), ExpiryLook::pen(5));
}

void tst_expirylook::colorsAreApart()
{
    constexpr int least = 75;
    for (int i = 0; i < ExpiryLook::count; ++i) {
        const QColor color = ExpiryLook::pen(i).color();
        QVERIFY2(distance(color, chosenSmile) > least, qPrintable(color.name()));
        for (int j = 0; j < i; ++j) {
            const QColor other = ExpiryLook::pen(j).color();
            QVERIFY2(color == other || distance(color, other) > least, qPrintable(color.name()));
        }
    }
}

// The band's is among them, a light blue.
void tst_expirylook::noColorIsOfTheChosenSeries()
{
    constexpr int least = 75;
    for (int i = 0; i < ExpiryLook::count; ++i) {
        const QColor color = ExpiryLook::pen(i).color();
        for (const CurveRole role : CurveLook::roles())
            QVERIFY2(distance(color, CurveLook::color(role)) > least,
                qPrintable(color.name() + QLatin1Char(' ') + CurveLook::title(role)));
    }
}

// By the contrast of two luminances as accessibility guidelines define it.
void tst_expirylook::standsOutOnWhite()
{
    for (int i = 0; i < ExpiryLook::count; ++i) {
        const QColor color = ExpiryLook::pen(i).color();
        QVERIFY2(1.05 / (luminance(color) + 0.05) > 2.0, qPrintable(color.name()));
    }
}

void tst_expirylook::swatchShowsTheLine_data()
{
    QTest::addColumn<double>("ratio");
    QTest::newRow("1") << 1.0;
    QTest::newRow("1.25") << 1.25;
    QTest::newRow("1.5") << 1.5;
    QTest::newRow("2") << 2.0;
}

void tst_expirylook::swatchShowsTheLine()
{
    QFETCH(double, ratio);
    for (const int position : {0, ExpiryLook::count - 1}) {
        const QPen pen = ExpiryLook::pen(position);
        const QPixmap pixmap = ExpiryLook::swatch(pen, ratio);
        QCOMPARE(pixmap.devicePixelRatio(), ratio);
        const QImage image = pixmap.toImage();
        QCOMPARE(image.width(), qRound(ExpiryLook::swatchWidth * ratio));
        int colored = 0;
        for (int x = 0; x < image.width(); ++x)
            colored += image.pixelColor(x, image.height() / 2).rgb() == pen.color().rgb() ? 1 : 0;
        QVERIFY(pen.style() == Qt::SolidLine ? colored == image.width()
                                             : colored > image.width() / 4 && colored < image.width());
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    }
}

PLOT2D_TEST_MAIN(tst_expirylook)
#include "tst_expirylook.moc"
