// How long the option desk lets its user wait while quotes come: the longest gaps between user events that
// are handled, for rising rates of quotes. Arguments: files of option chains beside the bundled samples.

#include "desk/window/answertimes.h"

#include <window/deskdata.h>
#include <window/deskwindow.h>

#include <chain/chainreader.h>
#include <chain/samplechains.h>
#include <database/exception.h>

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

namespace {

constexpr double seconds = 3.0;

void measure(const QString& file, DeskView view, int quotesPerSecond)
{
    DeskData data{QString()};
    OptionChain chain = readChain(file);
    const int position = applyFacts(SeriesFacts(), &chain);
    const int futureIsinId = data.import(chain, position);
    DeskWindow window(data, view);
    window.resize(1000, 640);
    window.showSeries(futureIsinId, SeriesFacts());
    window.show();
    QCoreApplication::processEvents();
    const AnswerFigures figures = measureAnswers(window, futureIsinId, quotesPerSecond, seconds);
    std::printf("%s, %s, %d options, %d quotes a second: %s%s\n", qPrintable(QFileInfo(file).baseName()),
        view == DeskView::Value ? "values" : "volatilities", window.shownSeries()->data.options.quotes.size(),
        quotesPerSecond, qPrintable(describe(figures)), figures.isComplete ? "" : ", NOT ALL WRITTEN");
    std::fflush(stdout);
}

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList files = sampleChainFiles() + QCoreApplication::arguments().mid(1);
    try {
        for (const QString& file : files) {
            for (const DeskView view : {DeskView::Volatility, DeskView::Value}) {
                for (const int rate : {1000, 10000, 100000})
                    measure(file, view, rate);
            }
        }
    } catch (const Exception& error) {
        std::fprintf(stderr, "bench_answers: %s\n", qPrintable(error.text()));
        return 1;
    }
    return 0;
}
