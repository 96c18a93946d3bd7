#include "support/testmain.h"

#include <plot2d/rememberingtextengine_p.h>
#include <plot2d/ticktext_p.h>

#include <QImage>
#include <QPainter>
#include <QTest>

#include <qwt_text.h>

namespace {

/// Qwt's engine, with its measurements counted.
class CountingEngine : public QwtPlainTextEngine {
public:
    QSizeF textSize(const QFont& font, int flags, const QString& text) const override
    {
        ++sizes;
        return QwtPlainTextEngine::textSize(font, flags, text);
    }
    void textMargins(const QFont& font, const QString& text, double& left, double& right, double& top,
        double& bottom) const override
    {
        ++margins;
        QwtPlainTextEngine::textMargins(font, text, left, right, top, bottom);
    }

    mutable int sizes = 0;
    mutable int margins = 0;
};

/// A host's engine, whose texts are wider.
class WideEngine : public QwtPlainTextEngine {
public:
    QSizeF textSize(const QFont& font, int flags, const QString& text) const override
    {
        return QwtPlainTextEngine::textSize(font, flags, text) + QSizeF(40.0, 0.0);
    }
};

QFont fontOf(int pixelSize)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    return font;
}

QImage drawn(const QwtText& text)
{
    QImage image(120, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(fontOf(13));
    text.draw(&painter, QRectF(4.0, 4.0, 110.0, 30.0));
    return image;
}

}

class tst_RememberingTextEngine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void measuresOnce();
    void answersAsTheMeasuringEngine();
    void forgetsWhatIsTooMuch_data();
    void forgetsWhatIsTooMuch();
    void tickTextsLookLikePlainOnes_data();
    void tickTextsLookLikePlainOnes();
    void hostsPlainEngineIsAsked();
};

void tst_RememberingTextEngine::measuresOnce()
{
    auto counting = std::make_unique<CountingEngine>();
    const CountingEngine& counts = *counting;
    const RememberingTextEngine engine(std::move(counting));
    double margin = 0.0;
    for (int round = 0; round < 3; ++round) {
        for (const int size : {11, 12}) {
            for (const char* text : {"1", "2.5"}) {
                engine.textSize(fontOf(size), Qt::AlignCenter, QLatin1String(text));
                engine.textMargins(fontOf(size), QLatin1String(text), margin, margin, margin, margin);
            }
        }
    }
    QCOMPARE(counts.sizes, 4);
    QCOMPARE(counts.margins, 2);
}

void tst_RememberingTextEngine::answersAsTheMeasuringEngine()
{
    const RememberingTextEngine engine(std::make_unique<QwtPlainTextEngine>());
    const QwtPlainTextEngine plain;
    for (int round = 0; round < 2; ++round) {
        for (const int size : {8, 12, 30}) {
            for (const int flags : {int(Qt::AlignCenter), int(Qt::AlignLeft | Qt::TextExpandTabs)}) {
                for (const char* string : {"", "1", "-1234.5", "two\nlines\there"}) {
                    const QString text = QLatin1String(string);
                    const QFont font = fontOf(size);
                    QCOMPARE(engine.textSize(font, flags, text), plain.textSize(font, flags, text));
                    QCOMPARE(engine.heightForWidth(font, flags, text, 20.0),
                        plain.heightForWidth(font, flags, text, 20.0));
                    double ours[4] = {};
                    double theirs[4] = {};
                    engine.textMargins(font, text, ours[0], ours[1], ours[2], ours[3]);
                    plain.textMargins(font, text, theirs[0], theirs[1], theirs[2], theirs[3]);
                    for (int side = 0; side < 4; ++side)
                        QCOMPARE(ours[side], theirs[side]);
                }
            }
        }
    }
    QVERIFY(!engine.mightRender(QStringLiteral("1")));
}

void tst_RememberingTextEngine::forgetsWhatIsTooMuch_data()
{
    QTest::addColumn<bool>("areFonts");
    QTest::addColumn<int>("most");
    QTest::newRow("texts") << false << 1000;
    QTest::newRow("fonts") << true << 8;
}

void tst_RememberingTextEngine::forgetsWhatIsTooMuch()
{
    QFETCH(bool, areFonts);
    QFETCH(int, most);
    auto counting = std::make_unique<CountingEngine>();
    const CountingEngine& counts = *counting;
    const RememberingTextEngine engine(std::move(counting));
    const QwtPlainTextEngine plain;
    const auto measure = [&](int number) {
        const QFont font = fontOf(areFonts ? 8 + number : 11);
        const QString text = QString::number(areFonts ? 1 : number);
        QCOMPARE(engine.textSize(font, 0, text), plain.textSize(font, 0, text));
    };
    for (int number = 0; number < most; ++number)
        measure(number);
    measure(0);
    QCOMPARE(counts.sizes, most);
    measure(most);
    measure(0);
    QCOMPARE(counts.sizes, most + 2);
    measure(most);
    QCOMPARE(counts.sizes, most + 2);
}

void tst_RememberingTextEngine::tickTextsLookLikePlainOnes_data()
{
    QTest::addColumn<QString>("string");
    QTest::newRow("number") << QStringLiteral("-92.85");
    QTest::newRow("nothing") << QString();
    QTest::newRow("unit") << QStringLiteral("+5 %");
    QTest::newRow("rich") << QStringLiteral("<b>5</b> up");
    QTest::newRow("lines") << QStringLiteral("1\n2");
}

void tst_RememberingTextEngine::tickTextsLookLikePlainOnes()
{
    QFETCH(QString, string);
    const QwtText ours = TickText::text(string);
    const QwtText plain(string, QwtText::AutoText);
    QCOMPARE(ours.text(), plain.text());
    QCOMPARE(ours.textSize(fontOf(13)), plain.textSize(fontOf(13)));
    QCOMPARE(drawn(ours), drawn(plain));
    QCOMPARE(TickText::rememberedFormat(), TickText::rememberedFormat());
}

void tst_RememberingTextEngine::hostsPlainEngineIsAsked()
{
    const QString string = QStringLiteral("105");
    const QSizeF usual = TickText::text(string).textSize(fontOf(13));
    // Qwt's own engine goes, and no text that knows it is left.
    QwtText::setTextEngine(QwtText::PlainText, new WideEngine);
    QCOMPARE(TickText::text(string).textSize(fontOf(13)), usual + QSizeF(40.0, 0.0));
    QwtText::setTextEngine(QwtText::PlainText, new QwtPlainTextEngine);
    QCOMPARE(TickText::text(string).textSize(fontOf(13)), usual);
}

PLOT2D_TEST_MAIN(tst_RememberingTextEngine)
#include "tst_rememberingtextengine.moc"
