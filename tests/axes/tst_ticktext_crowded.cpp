#include "support/testmain.h"

#include <plot2d/ticktext_p.h>

#include <QTest>

#include <qwt_text.h>
#include <qwt_text_engine.h>

namespace {

/// An engine that draws the texts of its own format only.
class OtherEngine : public QwtPlainTextEngine {
public:
    bool mightRender(const QString&) const override { return false; }
};

}

class tst_TickTextCrowded : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void drawsWithoutAFormatOfItsOwn();
};

void tst_TickTextCrowded::drawsWithoutAFormatOfItsOwn()
{
    // Engines of other libraries in the same program, for all formats that there can be.
    constexpr int last = 127;
    for (int format = QwtText::OtherFormat; format <= last; ++format)
        QwtText::setTextEngine(static_cast<QwtText::TextFormat>(format), new OtherEngine);
    QVector<const QwtTextEngine*> engines;
    for (int format = QwtText::OtherFormat; format <= last; ++format)
        engines.append(QwtText::textEngine(static_cast<QwtText::TextFormat>(format)));

    QCOMPARE(TickText::rememberedFormat(), QwtText::AutoText);
    const QwtText made = TickText::text(QStringLiteral("-1.25"));
    QVERIFY(made == QwtText(QStringLiteral("-1.25")));
    QCOMPARE(made.textSize(QFont()), QwtText(QStringLiteral("-1.25")).textSize(QFont()));
    for (int format = QwtText::OtherFormat; format <= last; ++format)
        QCOMPARE(QwtText::textEngine(static_cast<QwtText::TextFormat>(format)),
            engines[format - QwtText::OtherFormat]);
    QVERIFY(!QwtText::textEngine(static_cast<QwtText::TextFormat>(QwtText::OtherFormat - 1)));
}

PLOT2D_TEST_MAIN(tst_TickTextCrowded)
#include "tst_ticktext_crowded.moc"
