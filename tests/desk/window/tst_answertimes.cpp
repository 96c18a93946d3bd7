#include "answertimes.h"
#include "desktest.h"
#include "support/testmain.h"

#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <chain/chainreader.h>
#include <chain/samplechains.h>

/// The window answers its user while ten thousand quotes a second come.
class tst_answertimes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noticesStalls();
    void answersUnderManyQuotes_data();
    void answersUnderManyQuotes();
};

namespace {

constexpr int stallMilliseconds = 120;

// A build without optimisation needs about a seventh of this on an idle machine, with or without sanitizers.
#ifdef __SANITIZE_ADDRESS__
constexpr double longestGap = 1000.0;
#else
constexpr double longestGap = 250.0;
#endif

// What a window does that does not answer.
void stall()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < stallMilliseconds) { }
}

}

void tst_answertimes::noticesStalls()
{
    QWidget target;
    target.setMouseTracking(true);
    AnswerTimes answers(target);
    QTimer staller;
    connect(&staller, &QTimer::timeout, stall);
    staller.start(AnswerTimes::roundMilliseconds / 2);
    answers.start();
    QTRY_VERIFY(answers.longestGaps().size() > 5);
    answers.stop();
    QVERIFY(answers.handledCount() > 5);
    QVERIFY2(answers.medianGap() >= stallMilliseconds, qPrintable(QString::number(answers.medianGap())));
}

void tst_answertimes::answersUnderManyQuotes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("values");
    QTest::newRow("sample, volatilities") << sampleChainFiles().first() << false;
    QTest::newRow("sample, values") << sampleChainFiles().first() << true;
    QTest::newRow("crude oil") << DeskTest::realChain(DeskTest::crudeOilFile) << false;
    QTest::newRow("stock index") << DeskTest::realChain(DeskTest::indexFile) << false;
}

void tst_answertimes::answersUnderManyQuotes()
{
    QFETCH(QString, file);
    QFETCH(bool, values);
    if (file.isEmpty())
        QSKIP("the real chain is not there");
    constexpr int quotesPerSecond = 10000;
    constexpr double seconds = 3.0;

    DeskData data{QString()};
    OptionChain chain = readChain(file);
    const int position = applyFacts(SeriesFacts(), &chain);
    const int futureIsinId = data.import(chain, position);
    DeskWindow window(data, values ? DeskView::Value : DeskView::Volatility);
    window.resize(1000, 640);
    window.showSeries(futureIsinId, SeriesFacts());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const AnswerFigures figures = measureAnswers(window, futureIsinId, quotesPerSecond, seconds);
    qInfo("%s", qPrintable(describe(figures)));
    QVERIFY(figures.isComplete);
    QCOMPARE(figures.quotes, 30000);
    QVERIFY(figures.updates >= 2);
    QVERIFY(figures.paints >= 2);
    QVERIFY(figures.userEvents >= 20);
    QVERIFY2(figures.medianGap < longestGap, qPrintable(describe(figures)));
}

PLOT2D_TEST_MAIN(tst_answertimes)
#include "tst_answertimes.moc"
