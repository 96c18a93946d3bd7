#include "desktest.h"
#include "support/childrun.h"
#include "support/testmain.h"

#include <window/curvechoices.h>
#include <window/deskdata.h>
#include <window/desklegend.h>
#include <window/deskplot.h>

#include <plot2d/pricebased2dplotcurve.h>

#include <QAccessible>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QLayout>
#include <QMenu>

#include <qwt_legend_label.h>
#include <qwt_plot_canvas.h>
#include <qwt_text.h>

#include <cmath>

/// The desk's legend: its icons in pixels, its columns, and the menu of an entry.
class tst_desklegend : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void linesAreSharp_data();
    void linesAreSharp();
    void squaresAreSharp_data();
    void squaresAreSharp();
    void circlesAreSharp_data();
    void circlesAreSharp();
    void textIsPaintedAsByTheLabel();
    void columnsAreThoseOfTheSeriesShown();
    void nextSeriesIsLaidOut();
    void menuOfTheMouse();
    void menuOfTheKeyboard();
    void noMenuElsewhere();
    void menuOutlivesItsCurve();
    void screenReader();

private:
    void show(DeskView view);
    LabelWidget* entry(const QString& title) const;
    QwtLegendLabel* label(const QString& title) const;
    QCheckBox* box(const QString& title) const;
    QStringList checkedTitles() const;
    QRect iconPlace(const QString& title) const;
    QImage icon(const QString& title, double ratio) const;
    QMenu* openMenu(const QString& title);
    QAction* action(const char* text) const;

    std::unique_ptr<DeskData> m_data;
    std::unique_ptr<DeskPlot> m_plot;
    DeskLegend* m_legend = nullptr;
    int m_futureIsinId = 0;
};

namespace {

const QString smile = QStringLiteral("Smile");
const QString bid = QStringLiteral("Bid volatility");
const QString points = QStringLiteral("Implied volatility");
const QString forward = QStringLiteral("Forward");

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

void addRatios()
{
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%g", ratio) << ratio;
}

/// What the platform without a screen says of each menu.
void announceMenu()
{
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
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

void tst_desklegend::init()
{
    m_data = std::make_unique<DeskData>(QString());
    m_futureIsinId = m_data->import(DeskTest::quotedChain(), 0);
    m_plot = std::make_unique<DeskPlot>();
    m_legend = m_plot->findChild<DeskLegend*>();
    QVERIFY(m_legend);
    m_plot->choices().setColorQuestion([](const QString&, const QColor&, QWidget*) { return QColor(); });
    m_plot->resize(1000, 500);
}

void tst_desklegend::cleanup()
{
    m_plot.reset();
    m_data.reset();
}

void tst_desklegend::show(DeskView view)
{
    m_plot->showSeries(m_futureIsinId, m_data->show(m_futureIsinId, SeriesFacts()), view);
    m_plot->show();
    QVERIFY(QTest::qWaitForWindowActive(m_plot.get()));
    QCoreApplication::processEvents();
}

LabelWidget* tst_desklegend::entry(const QString& title) const
{
    const QLayout* layout = m_legend->contentsWidget()->layout();
    for (int i = 0; i < layout->count(); ++i) {
        auto* widget = qobject_cast<LabelWidget*>(layout->itemAt(i)->widget());
        if (widget && widget->findChild<QwtLegendLabel*>()->text().text() == title)
            return widget;
    }
    qFatal("no entry %s", qPrintable(title));
}

QwtLegendLabel* tst_desklegend::label(const QString& title) const
{
    return entry(title)->findChild<QwtLegendLabel*>();
}

QCheckBox* tst_desklegend::box(const QString& title) const
{
    return entry(title)->findChild<QCheckBox*>();
}

QStringList tst_desklegend::checkedTitles() const
{
    QStringList titles;
    const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(-1);
    for (const PriceBased2dPlotCurve* curve : curves) {
        const QString title = curve->title().text();
        if (curve->isVisible() != box(title)->isChecked())
            titles << QStringLiteral("not as its box: ") + title;
        else if (curve->isVisible())
            titles << title;
    }
    return titles;
}

// To the left in its label, in the middle of the height.
QRect tst_desklegend::iconPlace(const QString& title) const
{
    const QRect contents = label(title)->contentsRect();
    QRect place(0, 0, 24, 13);
    place.moveCenter(contents.center());
    place.moveLeft(contents.left() + label(title)->margin());
    return place.translated(label(title)->mapTo(m_plot.get(), QPoint()));
}

QImage tst_desklegend::icon(const QString& title, double ratio) const
{
    const QImage image = m_plot->grab().toImage();
    const QRect place = iconPlace(title);
    const QPoint topLeft(qRound(place.left() * ratio), qRound(place.top() * ratio));
    const QPoint end(
        qRound((place.left() + place.width()) * ratio), qRound((place.top() + place.height()) * ratio));
    return image.copy(QRect(topLeft, end - QPoint(1, 1)));
}

void tst_desklegend::linesAreSharp_data()
{
    addRatios();
}

void tst_desklegend::linesAreSharp()
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
        show(line.view);
        const QString title = QString::fromLatin1(line.title);
        for (const bool checked : {true, false}) {
            m_legend->setCheckBoxChecked(title, checked);
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

void tst_desklegend::squaresAreSharp_data()
{
    addRatios();
}

void tst_desklegend::squaresAreSharp()
{
    QFETCH(double, ratio);
    if (isDoneAt(ratio))
        return;
    show(DeskView::Volatility);
    for (const bool checked : {true, false}) {
        m_legend->setCheckBoxChecked(points, checked);
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

void tst_desklegend::circlesAreSharp_data()
{
    addRatios();
}

// A circle has no edges between pixels: its border is as many pixels thick as it should be, and white inside.
void tst_desklegend::circlesAreSharp()
{
    QFETCH(double, ratio);
    if (isDoneAt(ratio))
        return;
    OptionChain chain = DeskTest::quotedChain();
    for (OptionQuote& quote : chain.series.first().quotes)
        quote.volume = quote.strike == decimal::fromUnits(90, 0) ? 1 : 0;
    m_futureIsinId = m_data->import(chain, 0);
    show(DeskView::Volatility);
    for (const bool checked : {true, false}) {
        m_legend->setCheckBoxChecked(points, checked);
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

void tst_desklegend::textIsPaintedAsByTheLabel()
{
    show(DeskView::Volatility);
    for (const bool checked : {true, false}) {
        m_legend->setCheckBoxChecked(points, checked);
        QwtLegendLabel* own = label(points);
        const QRect text = own->textRect();
        const QImage image = own->grab(text).toImage();
        QVERIFY(!boundsOf(image, checked ? black : QColor(Qt::darkGray).rgb()).isEmpty());
        own->removeEventFilter(m_legend);
        QCOMPARE(image, own->grab(text).toImage());
        own->installEventFilter(m_legend);
    }
}

void tst_desklegend::columnsAreThoseOfTheSeriesShown()
{
    m_plot->resize(520, 500);
    for (const DeskView view : {DeskView::Volatility, DeskView::Value, DeskView::Volatility}) {
        DeskPlot fresh;
        fresh.resize(m_plot->size());
        fresh.showSeries(m_futureIsinId, m_data->show(m_futureIsinId, SeriesFacts()), view);
        show(view);
        QCOMPARE(m_legend->maxColumns(), fresh.findChild<DeskLegend*>()->maxColumns());
        QVERIFY(m_legend->maxColumns() > 1);
        QVERIFY(m_legend->maxColumns() < 5);
    }
}

void tst_desklegend::nextSeriesIsLaidOut()
{
    for (const DeskView view : {DeskView::Volatility, DeskView::Volatility, DeskView::Value}) {
        show(view);
        const QList<PriceBased2dPlotCurve*> curves = m_plot->attachedCurves(-1);
        for (const PriceBased2dPlotCurve* curve : curves) {
            const LabelWidget* widget = entry(curve->title().text());
            QVERIFY(widget->width() >= widget->sizeHint().width());
            QVERIFY(m_legend->rect().contains(QRect(widget->mapTo(m_legend, QPoint()), widget->size())));
        }
    }
}

QMenu* tst_desklegend::openMenu(const QString& title)
{
    announceMenu();
    QwtLegendLabel* target = label(title);
    const QPoint place = target->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, target->mapToGlobal(place));
    QApplication::sendEvent(target, &event);
    return m_plot->findChild<QMenu*>();
}

QAction* tst_desklegend::action(const char* text) const
{
    const QList<QAction*> all = m_plot->findChild<QMenu*>()->actions();
    for (QAction* each : all) {
        if (each->text() == QLatin1String(text))
            return each;
    }
    qFatal("no action %s", text);
}

void tst_desklegend::menuOfTheMouse()
{
    show(DeskView::Volatility);
    const QStringList all = checkedTitles();
    QCOMPARE(all.size(), 6);
    QVERIFY(openMenu(bid));
    action("&Only this curve")->trigger();
    QCOMPARE(checkedTitles(), QStringList(bid));
    action("&All curves")->trigger();
    QCOMPARE(checkedTitles(), all);

    // An entry that is unchecked itself.
    m_legend->setCheckBoxChecked(bid, false);
    action("&Only this curve")->trigger();
    QCOMPARE(checkedTitles(), QStringList(bid));

    QSignalSpy colors(m_legend, SIGNAL(colorRequested(QString)));
    action("&Colour...")->trigger();
    QCOMPARE(colors.takeFirst(), QVariantList{bid});
    delete m_plot->findChild<QMenu*>();
    // The line would not be valid in another colour.
    QVERIFY(openMenu(forward));
    QVERIFY(!action("&Colour...")->isEnabled());
    action("&Only this curve")->trigger();
    QCOMPARE(checkedTitles(), QStringList(forward));
    m_plot->findChild<QMenu*>()->close();
    QTRY_VERIFY(!m_plot->findChild<QMenu*>());
}

void tst_desklegend::menuOfTheKeyboard()
{
    show(DeskView::Volatility);
    box(bid)->setFocus();
    announceMenu();
    QTest::keyClick(m_plot->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QMenu* menu = m_plot->findChild<QMenu*>();
    QVERIFY(menu && menu->isVisible());
    QCOMPARE(menu->title(), bid);
    const QPoint below = box(bid)->mapToGlobal(box(bid)->rect().bottomLeft());
    QVERIFY((menu->pos() - below).manhattanLength() <= 2);
    // Down to the first, and take it.
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(checkedTitles(), QStringList(bid));
    QTRY_VERIFY(!m_plot->findChild<QMenu*>());

    box(smile)->setFocus();
    announceMenu();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(box(smile), &menuKey);
    QVERIFY(menuKey.isAccepted());
    menu = m_plot->findChild<QMenu*>();
    QVERIFY(menu);
    QCOMPARE(menu->title(), smile);
}

void tst_desklegend::noMenuElsewhere()
{
    show(DeskView::Volatility);
    m_plot->canvas()->setFocus();
    QTest::keyClick(m_plot->windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(!m_plot->findChild<QMenu*>());
    const QPoint corner = m_legend->rect().bottomRight();
    QVERIFY(!entry(smile)->geometry().contains(corner));
    QContextMenuEvent event(QContextMenuEvent::Mouse, corner, m_legend->mapToGlobal(corner));
    QApplication::sendEvent(m_legend, &event);
    QVERIFY(!m_plot->findChild<QMenu*>());
    QVERIFY(!event.isAccepted());
}

void tst_desklegend::menuOutlivesItsCurve()
{
    show(DeskView::Volatility);
    QVERIFY(openMenu(bid));
    show(DeskView::Value);
    QSignalSpy spy(m_legend, SIGNAL(visibilityChanged(QString, bool)));
    action("&Only this curve")->trigger();
    QCOMPARE(spy.count(), 4);
    action("&All curves")->trigger();
    QCOMPARE(spy.count(), 8);
    m_plot->showNothing(QStringLiteral("the reason"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    action("&Only this curve")->trigger();
    action("&Colour...")->trigger();
    QCOMPARE(spy.count(), 8);
}

void tst_desklegend::screenReader()
{
    show(DeskView::Volatility);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(openMenu(bid));
    QVERIFY(reader);
    QCOMPARE(reader->role(), QAccessible::PopupMenu);
    QVERIFY(reader->text(QAccessible::Name).contains(bid));
    QCOMPARE(reader->childCount(), 4);
    QCOMPARE(reader->child(0)->text(QAccessible::Name), QStringLiteral("Only this curve"));
    for (const QAction* each : m_plot->findChild<QMenu*>()->actions())
        QVERIFY(each->isSeparator() || !each->statusTip().isEmpty());
    reader = QAccessible::queryAccessibleInterface(box(bid));
    QCOMPARE(reader->text(QAccessible::Name), bid);
}

PLOT2D_TEST_MAIN(tst_desklegend)
#include "tst_desklegend.moc"
