#include "choosingdesk.h"
#include "desktest.h"
#include "support/childrun.h"
#include "support/testmain.h"

#include <qwt_legend_label.h>

#include <cmath>

/// The icons in the desk's legend, in device pixels, at several ratios of them to the plot's pixels.
class tst_desklegendicons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_desk.reset(); }
    void linesAreSharp_data() { addRatios(); }
    void linesAreSharp();
    void squaresAreSharp_data() { addRatios(); }
    void squaresAreSharp();
    void circlesAreSharp_data() { addRatios(); }
    void circlesAreSharp();

private:
    static void addRatios();
    QRect iconPlace(const QString& title) const;
    QImage icon(const QString& title, double ratio) const;

    std::unique_ptr<ChoosingDesk> m_desk;
};

namespace {

const QString points = QStringLiteral("Implied volatility");

constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb blue = qRgb(0x00, 0x72, 0xb2);
constexpr QRgb green = qRgb(0x00, 0x9e, 0x73);
constexpr QRgb orange = qRgb(0xe6, 0x9f, 0x00);
constexpr QRgb red = qRgb(255, 0, 0);
const QRgb grey = QColor(Qt::gray).rgb();

/// The lengths of the pieces of one colour in a row, from left to right.
QVector<int> runs(const QImage& image, int row)
{
    QVector<int> lengths;
    for (int x = 0; x < image.width(); ++x) {
        if (x == 0 || image.pixel(x, row) != image.pixel(x - 1, row))
            lengths.append(0);
        ++lengths.last();
    }
    return lengths;
}

bool isOf(const QImage& image, QRgb a, QRgb b)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y) | 0xff000000;
            if (pixel != a && pixel != b)
                return false;
        }
    }
    return true;
}

/// The smallest rectangle around all pixels of a colour.
QRect boundsOf(const QImage& image, QRgb color)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((image.pixel(x, y) | 0xff000000) == color)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

/// Whether the row is done here: by a process with the ratio of device pixels.
bool isDoneAt(double ratio)
{
    if (TestSupport::isChild())
        return false;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(ratio));
    const TestSupport::ChildRun run = TestSupport::repeatRowInChild(environment);
    [&] { QVERIFY2(run.passed(), run.output.constData()); }();
    return true;
}

}

void tst_desklegendicons::init()
{
    m_desk = std::make_unique<ChoosingDesk>();
    m_desk->start(DeskView::Volatility, ChoosingDesk::Keeping::Nowhere);
}

void tst_desklegendicons::addRatios()
{
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%g", ratio) << ratio;
}

// To the left in its label, in the middle of the height.
QRect tst_desklegendicons::iconPlace(const QString& title) const
{
    const QRect contents = m_desk->label(title)->contentsRect();
    QRect place(0, 0, 24, 13);
    place.moveCenter(contents.center());
    place.moveLeft(contents.left() + m_desk->label(title)->margin());
    return place.translated(m_desk->label(title)->mapTo(m_desk->plot.get(), QPoint()));
}

QImage tst_desklegendicons::icon(const QString& title, double ratio) const
{
    const QImage image = m_desk->plot->grab().toImage();
    const QRect place = iconPlace(title);
    const QPoint topLeft(qRound(place.left() * ratio), qRound(place.top() * ratio));
    const QPoint end(
        qRound((place.left() + place.width()) * ratio), qRound((place.top() + place.height()) * ratio));
    return image.copy(QRect(topLeft, end - QPoint(1, 1)));
}

void tst_desklegendicons::linesAreSharp()
{
    QFETCH(double, ratio);
    if (isDoneAt(ratio))
        return;
    struct Line {
        DeskView view;
        const char* title;
        QRgb color;
        double width;
        /// In widths, a piece and a gap; empty for a line without gaps.
        QVector<int> pattern;
    };
    const QVector<Line> lines{{DeskView::Volatility, "Smile", blue, 2.0, {}},
        {DeskView::Volatility, "Stated volatility", black, 1.0, {1, 2}},
        {DeskView::Volatility, "Bid volatility", green, 1.0, {}},
        {DeskView::Volatility, "Forward", red, 1.0, {}}, {DeskView::Value, "Call value", blue, 2.0, {}},
        {DeskView::Value, "Put value", green, 2.0, {4, 2}}};
    for (const Line& line : lines) {
        QVERIFY(m_desk->showWindow(line.view, m_desk->quoted));
        const QString title = QString::fromLatin1(line.title);
        for (const bool checked : {true, false}) {
            m_desk->legend->setCheckBoxChecked(title, checked);
            const QRgb color = checked ? line.color : grey;
            const QImage image = icon(title, ratio);
            const QByteArray where = QByteArray(line.title) + (checked ? ", checked" : ", unchecked");
            QVERIFY2(isOf(image, color, white), where);
            const QRect bounds = boundsOf(image, color);
            const int thickness = qMax(1, qRound(line.width * ratio));
            QVERIFY2(bounds.height() == thickness, where);
            QVERIFY2(std::abs(bounds.top() - (image.height() - 1 - bounds.bottom())) <= 1, where);
            QVERIFY2(bounds.left() == 0, where);
            for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
                const QVector<int> pieces = runs(image, y);
                if (line.pattern.isEmpty())
                    QVERIFY2(pieces == QVector<int>{image.width()}, where);
                for (int i = 0; !line.pattern.isEmpty() && i + 1 < pieces.size(); ++i)
                    QVERIFY2(pieces[i] == line.pattern[i % 2] * thickness, where);
            }
        }
    }
}

void tst_desklegendicons::squaresAreSharp()
{
    QFETCH(double, ratio);
    if (isDoneAt(ratio))
        return;
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    for (const bool checked : {true, false}) {
        m_desk->legend->setCheckBoxChecked(points, checked);
        const QRgb color = checked ? orange : grey;
        const QImage image = icon(points, ratio);
        QVERIFY(isOf(image, color, white));
        const QRect square = boundsOf(image, color);
        // 6 pixels and half a border of 1 around them.
        QCOMPARE(square.size(), QSize(qRound(7.0 * ratio), qRound(7.0 * ratio)));
        QVERIFY(isOf(image.copy(square), color, color));
        QVERIFY(std::abs(square.center().x() - image.rect().center().x()) <= 1);
        QVERIFY(std::abs(square.center().y() - image.rect().center().y()) <= 1);
    }
}

// A circle has no edges between pixels: its border is as many pixels thick as it should be, and white inside.
void tst_desklegendicons::circlesAreSharp()
{
    QFETCH(double, ratio);
    if (isDoneAt(ratio))
        return;
    OptionChain chain = DeskTest::quotedChain();
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.volume = quote.strike == decimal::fromUnits(90, 0) ? 1 : 0;
    m_desk->quoted = m_desk->data.import(chain, 0);
    QVERIFY(m_desk->showWindow(DeskView::Volatility, m_desk->quoted));
    for (const bool checked : {true, false}) {
        m_desk->legend->setCheckBoxChecked(points, checked);
        const QImage image = icon(points, ratio);
        const QRgb color = checked ? orange : grey;
        QRect circle;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != white)
                    circle |= QRect(x, y, 1, 1);
            }
        }
        const double diameter = 7.5 * ratio;
        QVERIFY(std::abs(circle.width() - diameter) <= 1.0 && circle.width() == circle.height());
        const QPoint middle = circle.center();
        QCOMPARE(image.pixel(middle), white);
        double ink = 0.0;
        for (int x = circle.left(); x <= middle.x(); ++x)
            ink += (255.0 - qBlue(image.pixel(x, middle.y()))) / (255.0 - qBlue(color));
        QVERIFY2(std::abs(ink - 1.5 * ratio) < 0.3, qPrintable(QString::number(ink)));
    }
}

PLOT2D_TEST_MAIN(tst_desklegendicons)
#include "tst_desklegendicons.moc"
