#include "support/testmain.h"

#include <plot2d/styledbackground_p.h>

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTest>
#include <QWidget>

#include <memory>
#include <optional>

namespace {

/// Fills widgets with a colour, puts one pixel of another into it, and counts.
class SpottedStyle : public QProxyStyle {
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override
    {
        if (element != PE_Widget) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        ++count;
        painter->fillRect(option->rect, fill);
        painter->fillRect(QRect(spot, QSize(1, 1)), Qt::red);
    }

    QColor fill = Qt::white;
    QPoint spot = nowhere;
    mutable int count = 0;

    static constexpr QPoint nowhere{-1, -1};
};

}

class tst_StyledBackground : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void oneColor();
    void otherThanOneColor_data();
    void otherThanOneColor();
    void paintsOnceUpToTheRoomThatItLeaves();
    void paintsAnewInAnotherState();
    void forgets();

private:
    std::optional<QColor> color() { return m_background.colorOf(*m_widget); }

    SpottedStyle m_style;
    std::unique_ptr<QWidget> m_widget;
    StyledBackground m_background;
};

void tst_StyledBackground::init()
{
    m_style.fill = Qt::white;
    m_style.spot = SpottedStyle::nowhere;
    m_style.count = 0;
    m_widget = std::make_unique<QWidget>();
    m_widget->setStyle(&m_style);
    m_widget->resize(100, 100);
    m_background.forget();
}

void tst_StyledBackground::oneColor()
{
    m_style.fill = QColor(1, 2, 3);
    QCOMPARE(color(), std::optional<QColor>(QColor(1, 2, 3)));
}

void tst_StyledBackground::otherThanOneColor_data()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QPoint>("spot");
    QTest::newRow("nothing") << QColor(Qt::transparent) << SpottedStyle::nowhere;
    QTest::newRow("translucent") << QColor(255, 255, 255, 254) << SpottedStyle::nowhere;
    QTest::newRow("first pixel") << QColor(Qt::white) << QPoint(0, 0);
    QTest::newRow("second pixel of the first line") << QColor(Qt::white) << QPoint(1, 0);
    QTest::newRow("first pixel of the second line") << QColor(Qt::white) << QPoint(0, 1);
    QTest::newRow("last pixel") << QColor(Qt::white) << QPoint(99, 99);
}

void tst_StyledBackground::otherThanOneColor()
{
    QFETCH(QColor, fill);
    QFETCH(QPoint, spot);
    m_style.fill = fill;
    m_style.spot = spot;
    QVERIFY(!color());
    // That there is none is remembered as well.
    QVERIFY(!color());
    QCOMPARE(m_style.count, 1);
}

void tst_StyledBackground::paintsOnceUpToTheRoomThatItLeaves()
{
    const auto paintings = [this](int width, int height) {
        m_widget->resize(width, height);
        color();
        return m_style.count;
    };
    QCOMPARE(paintings(100, 100), 1);
    QCOMPARE(paintings(100, 100), 1);
    QCOMPARE(paintings(10, 20), 1);
    QCOMPARE(paintings(128, 128), 1);
    QCOMPARE(paintings(129, 128), 2);
    QCOMPARE(paintings(129, 192), 2);
    QCOMPARE(paintings(129, 193), 3);
    QCOMPARE(paintings(10, 20), 3);
}

void tst_StyledBackground::paintsAnewInAnotherState()
{
    QCOMPARE(color(), std::optional<QColor>(Qt::white));
    m_style.fill = Qt::yellow;
    QCOMPARE(color(), std::optional<QColor>(Qt::white));
    m_widget->setEnabled(false);
    QCOMPARE(color(), std::optional<QColor>(Qt::yellow));
}

void tst_StyledBackground::forgets()
{
    QCOMPARE(color(), std::optional<QColor>(Qt::white));
    m_style.fill = Qt::yellow;
    m_background.forget();
    QCOMPARE(color(), std::optional<QColor>(Qt::yellow));
    QCOMPARE(m_style.count, 2);
}

PLOT2D_TEST_MAIN(tst_StyledBackground)
#include "tst_styledbackground.moc"
