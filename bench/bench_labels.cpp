// The time of PriceBased2dPlotScaleDraw::updateLabels() over the number of candidates, on an axis on which
// nearly all labels overlap. The last rows give the fitted order of growth.

#include <plot2d/pricebased2dplotscaledraw.h>

#include <QApplication>

#include <qwt_plot.h>

#include <benchmark/benchmark.h>

namespace {

constexpr double axisLength = 800.0;

QwtScaleDiv divisionWith(int tickCount)
{
    constexpr double lowest = 100.0;
    constexpr double step = 0.05;
    QList<double> ticks;
    ticks.reserve(tickCount);
    for (int i = 0; i < tickCount; ++i)
        ticks.append(lowest + i * step);
    return QwtScaleDiv(lowest, ticks.last(), {}, {}, ticks);
}

void updateLabels(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    const QwtScaleDiv division = divisionWith(count);
    PriceBased2dPlotScaleDraw draw(QwtPlot::xBottom);
    draw.setAlignment(QwtScaleDraw::BottomScale);
    draw.setLength(axisLength);
    draw.setPaintedOnce();
    draw.setCurKotirValue((division.lowerBound() + division.upperBound()) / 2.0);
    draw.setCurKotirEnabled(true);
    for (auto _ : state) {
        draw.setScaleDiv(division);
        draw.updateLabels();
        benchmark::DoNotOptimize(draw.labelTicks());
    }
    state.SetComplexityN(count);
}

}

BENCHMARK(updateLabels)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
