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

class tst_TickText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void leavesOthersTheirFormats();
    void plainTextsAreRemembered_data();
    void plainTextsAreRemembered();
    void textsOfAHostsEnginesAreLeftToThem_data();
    void textsOfAHostsEnginesAreLeftToThem();
};

void tst_TickText::leavesOthersTheirFormats()
{
    // Engines of other libraries in the same program, set before the first label is drawn. The enumeration
    // holds no number beyond 127.
    constexpr int firstOther = QwtText::OtherFormat;
    QVector<const QwtTextEngine*> engines;
    for (int format = firstOther; format < firstOther + 24; ++format) {
        QwtText::setTextEngine(static_cast<QwtText::TextFormat>(format), new OtherEngine);
        engines.append(QwtText::textEngine(static_cast<QwtText::TextFormat>(format)));
    }
    const QwtText::TextFormat ours = TickText::rememberedFormat();
    QVERIFY(ours >= firstOther + engines.size());
    for (int i = 0; i < engines.size(); ++i)
        QCOMPARE(QwtText::textEngine(static_cast<QwtText::TextFormat>(firstOther + i)), engines[i]);
    QVERIFY(QwtText::textEngine(ours));
    QCOMPARE(TickText::rememberedFormat(), ours);
}

void tst_TickText::plainTextsAreRemembered_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRemembered");
    QTest::newRow("number") << QStringLiteral("-1.25") << true;
    QTest::newRow("none") << QString() << true;
    QTest::newRow("rich") << QStringLiteral("<b>5</b>") << false;
}

void tst_TickText::plainTextsAreRemembered()
{
    QFETCH(QString, text);
    QFETCH(bool, isRemembered);
    const QwtText made = TickText::text(text);
    QCOMPARE(made.text(), text);
    const QwtText expected(text, isRemembered ? TickText::rememberedFormat() : QwtText::AutoText);
    QVERIFY(made == expected);
    QCOMPARE(made.textSize(QFont()), QwtText(text).textSize(QFont()));
}

void tst_TickText::textsOfAHostsEnginesAreLeftToThem_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("isDerived");
    QTest::newRow("in the place of Qwt's") << int(QwtText::PlainText) << true;
    QTest::newRow("asked before Qwt's") << int(QwtText::OtherFormat) << false;
}

void tst_TickText::textsOfAHostsEnginesAreLeftToThem()
{
    QFETCH(int, format);
    QFETCH(bool, isDerived);
    const auto hosts = static_cast<QwtText::TextFormat>(format);
    QwtText::setTextEngine(hosts, isDerived ? new OtherEngine : new QwtPlainTextEngine);
    QVERIFY(QwtText::textEngine(QStringLiteral("5"), QwtText::AutoText) == QwtText::textEngine(hosts));
    QVERIFY(TickText::text(QStringLiteral("5")) == QwtText(QStringLiteral("5"), QwtText::AutoText));
    QwtText::setTextEngine(hosts, isDerived ? new QwtPlainTextEngine : nullptr);
    QVERIFY(
        TickText::text(QStringLiteral("5")) == QwtText(QStringLiteral("5"), TickText::rememberedFormat()));
}

PLOT2D_TEST_MAIN(tst_TickText)
#include "tst_ticktext.moc"
