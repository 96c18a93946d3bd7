#include "support/childrun.h"
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

/// What becomes of tick labels where other libraries in the same program have taken the formats of Qwt's
/// users.
class tst_TickTextCrowded : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void leavesOthersTheirFormats_data();
    void leavesOthersTheirFormats();
};

void tst_TickTextCrowded::leavesOthersTheirFormats_data()
{
    QTest::addColumn<int>("firstTaken");
    QTest::addColumn<int>("ours");
    QTest::newRow("one is left") << QwtText::OtherFormat + 1 << int(QwtText::OtherFormat);
    QTest::newRow("none is left") << int(QwtText::OtherFormat) << int(QwtText::AutoText);
}

void tst_TickTextCrowded::leavesOthersTheirFormats()
{
    QFETCH(int, firstTaken);
    // The library looks for a format once in a process.
    if (!TestSupport::isChild()) {
        const TestSupport::ChildRun run
            = TestSupport::repeatRowInChild(QProcessEnvironment::systemEnvironment());
        QVERIFY2(run.passed(), run.output.constData());
        return;
    }
    constexpr int last = 127;
    const auto engineOf
        = [](int format) { return QwtText::textEngine(static_cast<QwtText::TextFormat>(format)); };
    QVector<const QwtTextEngine*> engines;
    for (int format = firstTaken; format <= last; ++format) {
        QwtText::setTextEngine(static_cast<QwtText::TextFormat>(format), new OtherEngine);
        engines.append(engineOf(format));
    }

    QTEST(int(TickText::rememberedFormat()), "ours");
    const QwtText made = TickText::text(QStringLiteral("-1.25"));
    QVERIFY(made == QwtText(QStringLiteral("-1.25"), TickText::rememberedFormat()));
    QCOMPARE(made.textSize(QFont()), QwtText(QStringLiteral("-1.25")).textSize(QFont()));
    for (int format = firstTaken; format <= last; ++format)
        QCOMPARE(engineOf(format), engines[format - firstTaken]);
}

PLOT2D_TEST_MAIN(tst_TickTextCrowded)
#include "tst_ticktext_crowded.moc"
