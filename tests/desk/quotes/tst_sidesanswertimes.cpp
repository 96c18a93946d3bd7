#include "../window/answertimes.h"
#include "desk/window/desktest.h"
#include "support/testmain.h"

#include <quotes/quotesdock.h>
#include <quotes/quotesmodel.h>
#include <seriestree/seriesdock.h>
#include <seriestree/seriestreemodel.h>
#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <chain/chainreader.h>
#include <chain/samplechains.h>

/// The window with the tree and the table at its sides answers its user while ten thousand quotes a second
/// come, for the chosen expiry or for one beside it.
class tst_sidesanswertimes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersUnderManyQuotes_data();
    void answersUnderManyQuotes();
};

namespace {

// Several times what a build without optimisation needs on an idle machine.
#ifdef __SANITIZE_ADDRESS__
constexpr double longestGap = 1500.0;
#else
constexpr double longestGap = 400.0;
#endif

}

void tst_sidesanswertimes::answersUnderManyQuotes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("beside");
    QTest::newRow("sample, chosen") << sampleChainFiles().first() << false;
    QTest::newRow("sample, beside") << sampleChainFiles().first() << true;
    QTest::newRow("stock index, chosen") << DeskTest::realChain(DeskTest::indexFile) << false;
    QTest::newRow("stock index, beside") << DeskTest::realChain(DeskTest::indexFile) << true;
}

void tst_sidesanswertimes::answersUnderManyQuotes()
{
    QFETCH(QString, file);
    QFETCH(bool, beside);
    if (file.isEmpty())
        QSKIP("the real chain is not there");
    constexpr int quotesPerSecond = 10000;
    constexpr double seconds = 3.0;

    DeskData data{QString()};
    OptionChain chain = readChain(file);
    const int position = applyFacts(SeriesFacts(), &chain);
    const int chosen = data.import(chain, position);
    DeskWindow window(data, DeskView::Volatility);
    const auto* const tree = new SeriesDock(&window);
    const auto* const quotes = new QuotesDock(&window);
    window.resize(1300, 700);
    window.showSeries(chosen, SeriesFacts());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(quotes->isVisible());
    QVERIFY(quotes->findChild<QuotesModel*>()->rowCount() > 10);

    const QVector<SeriesBeside> others = tree->findChild<SeriesTreeModel*>()->beside();
    QVERIFY(!others.isEmpty());
    const int fed = beside ? others.first().futureIsinId : chosen;
    const AnswerFigures figures = measureAnswers(window, fed, quotesPerSecond, seconds);
    qInfo("%s", qPrintable(describe(figures)));
    QVERIFY(figures.isComplete);
    QVERIFY(figures.paints >= 2);
    QVERIFY(figures.userEvents >= 20);
    QVERIFY2(figures.medianGap < longestGap, qPrintable(describe(figures)));
}

PLOT2D_TEST_MAIN(tst_sidesanswertimes)
#include "tst_sidesanswertimes.moc"
