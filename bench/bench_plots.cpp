// Plots of several libraries put to the same work, interleaved in one run, and a table of ratios: of the time
// that the process spends, of a screen of 1280 by 720 pixels without a display. Argument: the number of
// rounds.

#include "contender.h"

#include <QApplication>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <map>
#include <optional>
#include <random>
#include <string>

namespace {

constexpr double leftEnd = 50.0;
constexpr double rightEnd = 150.0;

/// Smiles with some noise.
BenchData smiles(int curves, int samples)
{
    BenchData data;
    std::mt19937 random(20240229);
    for (int i = 0; i < samples; ++i)
        data.prices.append(leftEnd + (rightEnd - leftEnd) * i / (samples - 1));
    for (int curve = 0; curve < curves; ++curve) {
        QVector<double> values;
        for (const double price : qAsConst(data.prices)) {
            const double distance = price - 100.0;
            const double noise = (double(random()) / double(std::mt19937::max()) - 0.5) * 0.001;
            values.append(0.2 + 0.015 * curve + (0.00006 + 0.00001 * curve) * distance * distance + noise);
        }
        data.values.push_back(values);
    }
    return data;
}

/// Steps of a user: a zoom in by the wheel, pans there and back, and a zoom out.
std::vector<std::pair<double, double>> userSteps()
{
    std::vector<std::pair<double, double>> steps;
    double left = leftEnd;
    double right = rightEnd;
    const auto zoom = [&](double factor) {
        const double centre = left + 0.6 * (right - left);
        left = std::max(leftEnd, centre - (centre - left) * factor);
        right = std::min(rightEnd, centre + (right - centre) * factor);
        steps.emplace_back(left, right);
    };
    for (int i = 0; i < 20; ++i)
        zoom(0.9);
    for (int i = 0; i < 40; ++i) {
        const double way = (right - left) / 120.0 * (i < 20 ? -1.0 : 1.0);
        left += way;
        right += way;
        steps.emplace_back(left, right);
    }
    for (int i = 0; i < 20; ++i)
        zoom(1.0 / 0.9);
    return steps;
}

double processSeconds()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

double percentile(std::vector<double> numbers, double part)
{
    std::sort(numbers.begin(), numbers.end());
    return numbers[std::size_t(std::lround(part * double(numbers.size() - 1)))];
}

double median(const std::vector<double>& numbers)
{
    return percentile(numbers, 0.5);
}

template <class Work> double secondsOf(const Work& work)
{
    const double start = processSeconds();
    work();
    return processSeconds() - start;
}

/// A contender on an image, laid out and painted once.
class Stage {
public:
    Stage(const ContenderFactory& create, const BenchLook& look, const BenchData& data)
        : m_data(data)
        , m_contender(create(look))
        , m_image(1280, 720, QImage::Format_RGB32)
    {
        if (QWidget* const widget = m_contender->widget()) {
            widget->resize(m_image.size());
            widget->show();
        }
        m_contender->feed(data);
        QCoreApplication::processEvents();
        showFrame(leftEnd, rightEnd);
        showFrame(leftEnd + 1.0, rightEnd - 1.0);
    }

    /// The time of a frame at a part of the user's steps.
    double frameSeconds(double part)
    {
        static const auto steps = userSteps();
        std::vector<double> seconds;
        for (const auto& [left, right] : steps)
            seconds.push_back(secondsOf([&, from = left, to = right] { showFrame(from, to); }));
        return percentile(seconds, part);
    }

    double feedSeconds()
    {
        std::vector<double> seconds;
        for (int i = 0; i < 5; ++i)
            seconds.push_back(secondsOf([&] { m_contender->feed(m_data); }));
        return median(seconds);
    }

    double pickSeconds()
    {
        showFrame(leftEnd, rightEnd);
        std::mt19937 random(7);
        const auto part = [&] { return double(random()) / double(std::mt19937::max()); };
        std::vector<double> seconds;
        for (int i = 0; i < 30; ++i) {
            const double x = part();
            const double y = part();
            seconds.push_back(secondsOf([&] { m_contender->pick(x, y); }));
        }
        return median(seconds);
    }

    double rangeSeconds()
    {
        static const auto steps = userSteps();
        std::vector<double> seconds;
        for (const auto& [left, right] : steps)
            seconds.push_back(secondsOf([&, from = left, to = right] { m_contender->findRange(from, to); }));
        return median(seconds);
    }

private:
    void showFrame(double left, double right)
    {
        m_contender->show(left, right);
        m_contender->paint(m_image);
    }

    const BenchData& m_data;
    std::unique_ptr<Contender> m_contender;
    QImage m_image;
};

/// The bytes taken from the heap.
double heapBytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks) + double(heap.hblkhd);
}

struct Named {
    std::string name;
    ContenderFactory create;
};

using Measure = std::function<double(Stage&)>;

/// The medians over rounds of what is measured of each contender, as a multiple of what is measured of
/// another: the two follow each other, so that they share what else the machine does.
class Bench {
public:
    explicit Bench(int rounds)
        : m_rounds(rounds)
    {
        m_contenders = {{"plot2d", createPlot2dContender}, {"Qwt", createQwtContender}};
#ifdef HAS_QCUSTOMPLOT
        m_contenders.push_back({"QCustomPlot", createQCustomPlotContender});
#endif
        std::printf("%-44s", "");
        for (const Named& contender : m_contenders)
            std::printf("%12s", contender.name.c_str());
        std::printf("\n");
    }

    /// Against a bare painter, or another reference.
    void againstOther(const char* title, const BenchLook& look, int samples, const Measure& measure,
        const ContenderFactory& reference = createPainterContender)
    {
        const BenchData data = smiles(look.curves, samples);
        Stage other(reference, look, data);
        print(title, [&](const Named& contender) {
            Stage stage(contender.create, look, data);
            return medianRatio([&] { return measure(stage); }, [&] { return measure(other); });
        });
    }

    /// Of many samples against few of the same plot.
    void manyAgainstFew(const char* title, int many, int few, const Measure& measure)
    {
        const BenchLook look;
        const BenchData manyData = smiles(look.curves, many);
        const BenchData fewData = smiles(look.curves, few);
        print(title, [&](const Named& contender) {
            Stage manyStage(contender.create, look, manyData);
            Stage fewStage(contender.create, look, fewData);
            return medianRatio([&] { return measure(manyStage); }, [&] { return measure(fewStage); });
        });
    }

    /// What curves take beside the bytes of their samples, in parts of these.
    void memory(const char* title, int samples)
    {
        const BenchLook look;
        const BenchData data = smiles(look.curves, samples);
        const BenchData noData = smiles(look.curves, 2);
        const double bytes = 2.0 * sizeof(double) * look.curves * samples;
        print(title, [&](const Named& contender) {
            const auto taken = [&](const BenchData& fed) {
                const double before = heapBytes();
                Stage stage(contender.create, look, fed);
                return heapBytes() - before;
            };
            taken(noData);
            return std::max(0.0, (taken(data) - taken(noData)) / bytes - 1.0);
        });
    }

private:
    template <class Ratio> void print(const char* title, const Ratio& ratio)
    {
        std::printf("%-44s", title);
        for (const Named& contender : m_contenders) {
            std::printf("%12.3g", ratio(contender));
            std::fflush(stdout);
        }
        std::printf("\n");
    }

    template <class First, class Second> double medianRatio(const First& first, const Second& second) const
    {
        std::vector<double> ratios;
        for (int round = 0; round < m_rounds; ++round) {
            const double dividend = first();
            ratios.push_back(dividend / second());
        }
        return median(ratios);
    }

    int m_rounds;
    std::vector<Named> m_contenders;
};

void setUpApplication()
{
    QApplication::setStyle(QStringLiteral("fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    QPalette palette(Qt::white);
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::Base, Qt::white);
    QApplication::setPalette(palette);
}

void run(Bench& bench)
{
    const Measure frame = [](Stage& stage) { return stage.frameSeconds(0.5); };
    const Measure slowFrame = [](Stage& stage) { return stage.frameSeconds(0.95); };
    const Measure feed = [](Stage& stage) { return stage.feedSeconds(); };
    const Measure pick = [](Stage& stage) { return stage.pickSeconds(); };
    const Measure range = [](Stage& stage) { return stage.rangeSeconds(); };
    constexpr int many = 100000;
    constexpr int most = 1000000;

    bench.againstOther("labels alone, frame / painter's", {0, 1.0, false}, 2, frame);
    bench.againstOther("frame of 1,000 samples / painter's", {}, 1000, frame);
    bench.againstOther("frame of 10,000 samples / painter's", {}, 10000, frame);
    bench.againstOther("frame of 100,000 samples / painter's", {}, many, frame);
    bench.againstOther("95th of 100 frames of 100,000 / painter's", {}, many, slowFrame);
    bench.againstOther("100,000 samples, pen of 2 / painter's", {5, 2.0, false}, many, frame);
    bench.againstOther("100,000 samples, antialiased / painter's", {5, 1.0, true}, many, frame);
    bench.manyAgainstFew("frame of 1,000,000 samples / of 1,000", most, 1000, frame);
    bench.againstOther("feed of 100,000 samples / copy and scan", {}, many, feed);
    bench.againstOther("pick of 100,000 samples / Qwt's", {}, many, pick, createQwtContender);
    bench.manyAgainstFew("range of 1,000,000 samples / of 1,000", most, 1000, range);
    bench.memory("memory beside 100,000 samples / theirs", many);
}

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    setUpApplication();
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
    if (rounds < 1) {
        std::fprintf(stderr, "usage: bench_plots [ROUNDS]\n");
        return 1;
    }
    Bench bench(rounds);
    run(bench);
    return 0;
}
