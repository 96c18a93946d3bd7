#include "pictures.h"

#include "support/testmain.h"

#include <plot2d/legendcheckbox_p.h>

#include <QElapsedTimer>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>

namespace {

/// Counts the boxes that it draws.
class CountingStyle : public QProxyStyle {
public:
    CountingStyle()
        : QProxyStyle(QStringLiteral("Fusion"))
    {
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override
    {
        count += element == CE_CheckBox ? 1 : 0;
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    mutable int count = 0;
};

/// Only pictures of whole pixels are kept.
bool keepsPictures(const QWidget& box)
{
    return std::floor(box.devicePixelRatioF()) == box.devicePixelRatioF();
}

QImage picture(QWidget& widget, double pixelRatio)
{
    QImage image(widget.size() * pixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::yellow);
    widget.render(&image);
    return image;
}

/// Through a painter that is moved or scaled by itself.
QImage pictureBy(QWidget& widget, const QTransform& transform)
{
    QImage image(widget.size() * 2 + QSize(2, 2), QImage::Format_RGB32);
    image.fill(Qt::yellow);
    QPainter painter(&image);
    painter.setTransform(transform);
    widget.render(&painter);
    return image;
}

}

class tst_LegendCheckBox : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void looksLikeTheStyles_data();
    void looksLikeTheStyles();
    void looksLikeTheStyleByAPainter_data();
    void looksLikeTheStyleByAPainter();
    void looksLikeTheStylesWithMoreThanABox_data();
    void looksLikeTheStylesWithMoreThanABox();
    void followsItsPalette();
    void drawsOnceForEachState();
    void drawsAnewWhereItMayLookOtherwise_data();
    void drawsAnewWhereItMayLookOtherwise();
    void drawsDirectlyWhileAStyleMayBlend();
};

void tst_LegendCheckBox::looksLikeTheStyles_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("sheet");
    for (const QString& style : QStyleFactory::keys()) {
        QTest::newRow(qPrintable(style)) << style << QString();
        QTest::newRow(qPrintable(style + " with a sheet"))
            << style << QStringLiteral("QWidget { background-color: white }");
    }
}

void tst_LegendCheckBox::looksLikeTheStyles()
{
    QFETCH(QString, style);
    QFETCH(QString, sheet);
    const std::unique_ptr<QStyle> drawing(QStyleFactory::create(style));
    QWidget ourParent;
    QWidget plainParent;
    LegendCheckBox ours(&ourParent);
    QCheckBox plain(&plainParent);
    for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain}) {
        box->setStyle(drawing.get());
        box->setStyleSheet(sheet);
        box->resize(box->sizeHint() + QSize(3, 2));
    }
    for (int state = 0; state < 12; ++state) {
        for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain}) {
            box->setChecked(state % 2 == 1);
            box->setEnabled(state % 3 != 2);
            box->setDown(state % 4 == 3);
            box->setLayoutDirection(state > 8 ? Qt::RightToLeft : Qt::LeftToRight);
            if (state == 6)
                box->setStyleSheet(sheet + QStringLiteral(" QCheckBox { spacing: 9px }"));
        }
        for (const double pixelRatio : {1.0, 2.0, 1.5, 3.0}) {
            // A second time from what is kept.
            for (int paint = 0; paint < 2; ++paint)
                QCOMPARE(
                    Pictures::difference(picture(ours, pixelRatio), picture(plain, pixelRatio)), QString());
        }
    }
}

void tst_LegendCheckBox::looksLikeTheStyleByAPainter_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::newRow("as it is") << QTransform();
    QTest::newRow("moved") << QTransform::fromTranslate(1.0, 2.0);
    QTest::newRow("half a pixel aside") << QTransform::fromTranslate(0.5, 0.0);
    QTest::newRow("half a pixel down") << QTransform::fromTranslate(0.0, 0.5);
    QTest::newRow("wider") << QTransform::fromScale(2.0, 1.0);
    QTest::newRow("higher") << QTransform::fromScale(1.0, 2.0);
    QTest::newRow("sheared") << QTransform(1.0, 0.0, 0.5, 1.0, 0.0, 0.0);
}

void tst_LegendCheckBox::looksLikeTheStyleByAPainter()
{
    QFETCH(QTransform, transform);
    LegendCheckBox ours;
    QCheckBox plain;
    for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain}) {
        box->setChecked(true);
        box->resize(box->sizeHint() + QSize(3, 2));
    }
    for (int paint = 0; paint < 2; ++paint)
        QCOMPARE(Pictures::difference(pictureBy(ours, transform), pictureBy(plain, transform)), QString());
}

void tst_LegendCheckBox::looksLikeTheStylesWithMoreThanABox_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("hasIcon");
    QTest::newRow("text") << QStringLiteral("text") << false;
    QTest::newRow("icon") << QString() << true;
    QTest::newRow("both") << QStringLiteral("text") << true;
}

void tst_LegendCheckBox::looksLikeTheStylesWithMoreThanABox()
{
    QFETCH(QString, text);
    QFETCH(bool, hasIcon);
    QPixmap icon(8, 8);
    icon.fill(Qt::red);
    LegendCheckBox ours;
    QCheckBox plain;
    for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain})
        box->resize(120, 30);
    // From alone to more and back.
    for (const bool isMore : {false, true, false}) {
        for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain}) {
            box->setText(isMore ? text : QString());
            box->setIcon(isMore && hasIcon ? QIcon(icon) : QIcon());
        }
        QCOMPARE(Pictures::difference(picture(ours, 1.0), picture(plain, 1.0)), QString());
    }
}

void tst_LegendCheckBox::followsItsPalette()
{
    LegendCheckBox ours;
    QCheckBox plain;
    for (const QColor& color : {QColor(Qt::white), QColor(Qt::green), QColor(Qt::white)}) {
        for (QCheckBox* box : {static_cast<QCheckBox*>(&ours), &plain}) {
            QPalette palette = box->palette();
            palette.setColor(QPalette::Base, color);
            palette.setColor(QPalette::Button, color);
            palette.setColor(QPalette::Window, color);
            box->setPalette(palette);
            box->resize(30, 30);
        }
        for (int paint = 0; paint < 2; ++paint)
            QCOMPARE(Pictures::difference(picture(ours, 1.0), picture(plain, 1.0)), QString());
    }
}

void tst_LegendCheckBox::drawsOnceForEachState()
{
    CountingStyle style;
    LegendCheckBox box;
    box.setStyle(&style);
    box.resize(30, 30);
    const int paints = 3;
    const int once = keepsPictures(box) ? 1 : paints;
    const int never = keepsPictures(box) ? 0 : paints;
    const auto draws = [&](const std::function<void()>& change) {
        change();
        style.count = 0;
        for (int i = 0; i < paints; ++i)
            picture(box, box.devicePixelRatioF());
        return style.count;
    };
    QCOMPARE(draws([] {}), once);
    QCOMPARE(draws([] {}), never);
    QCOMPARE(draws([&] { box.resize(31, 30); }), once);
    QCOMPARE(draws([&] { box.setText(QStringLiteral("text")); }), paints);
    QCOMPARE(draws([&] { box.setText(QString()); }), never);
    QPixmap icon(8, 8);
    icon.fill(Qt::red);
    QCOMPARE(draws([&] { box.setIcon(icon); }), paints);
    QCOMPARE(draws([&] { box.setIcon(QIcon()); }), never);
}

void tst_LegendCheckBox::drawsAnewWhereItMayLookOtherwise_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("draws");
    QTest::newRow("style") << int(QEvent::StyleChange) << 1;
    QTest::newRow("polish") << int(QEvent::PolishRequest) << 1;
    QTest::newRow("direction") << int(QEvent::LayoutDirectionChange) << 1;
    QTest::newRow("tool tip") << int(QEvent::ToolTipChange) << 0;
    QTest::newRow("of a user") << int(QEvent::User) << 0;
}

void tst_LegendCheckBox::drawsAnewWhereItMayLookOtherwise()
{
    QFETCH(int, type);
    CountingStyle style;
    LegendCheckBox box;
    box.setStyle(&style);
    box.resize(30, 30);
    picture(box, box.devicePixelRatioF());
    style.count = 0;
    QEvent event(static_cast<QEvent::Type>(type));
    QCoreApplication::sendEvent(&box, &event);
    const int paints = 3;
    for (int i = 0; i < paints; ++i)
        picture(box, box.devicePixelRatioF());
    QFETCH(int, draws);
    QCOMPARE(style.count, keepsPictures(box) ? draws : paints);
}

void tst_LegendCheckBox::drawsDirectlyWhileAStyleMayBlend()
{
    CountingStyle style;
    LegendCheckBox box;
    if (!keepsPictures(box))
        QSKIP("Pictures of whole pixels only are kept.");
    box.setStyle(&style);
    box.resize(30, 30);
    picture(box, box.devicePixelRatioF());
    QElapsedTimer time;
    int paints = 0;
    // Once more where the machine was too slow to paint twice within the second.
    do {
        time.start();
        box.toggle();
        style.count = 0;
        for (paints = 0; paints < 3 || time.elapsed() < 20; ++paints)
            picture(box, box.devicePixelRatioF());
    } while (time.elapsed() > 900);
    QCOMPARE(style.count, paints);
    const auto paintsFromWhatIsKept = [&] {
        picture(box, box.devicePixelRatioF());
        style.count = 0;
        picture(box, box.devicePixelRatioF());
        return style.count == 0;
    };
    QTRY_VERIFY(paintsFromWhatIsKept());
}

PLOT2D_TEST_MAIN(tst_LegendCheckBox)
#include "tst_legendcheckbox.moc"
