#pragma once

#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

/// Curves over the same prices.
struct BenchData {
    QVector<double> prices;
    std::vector<QVector<double>> values;

    int size() const { return prices.size(); }
};

/// A range of prices, and of the values there.
struct BenchView {
    double left = 0.0;
    double right = 0.0;
    double low = 0.0;
    double high = 0.0;
};

struct BenchLook {
    int curves = 5;
    double penWidth = 1.0;
    bool isSoft = false;
};

/// A way to plot curves of a look, put to the same work as the others. Places on it are in parts of its
/// canvas.
class Contender {
public:
    virtual ~Contender() = default;

    /// Null for one that is no widget and paints by itself.
    virtual QWidget* widget() { return nullptr; }
    virtual void feed(const BenchData& data) = 0;
    /// A user's step: new prices, and values that fit them. All but painting.
    virtual void show(double left, double right) = 0;
    virtual void paint(QImage& image);
    /// Looks for the sample nearest to a place.
    virtual void pick(double x, double y) = 0;
    /// Finds the range of the values between two prices.
    virtual void findRange(double left, double right) = 0;
};

using ContenderFactory = std::function<std::unique_ptr<Contender>(const BenchLook&)>;

std::unique_ptr<Contender> createPlot2dContender(const BenchLook& look);
std::unique_ptr<Contender> createQwtContender(const BenchLook& look);
std::unique_ptr<Contender> createQCustomPlotContender(const BenchLook& look);
/// A bare painter that fills, draws two points per column of pixels and curve, two axes and twelve
/// labels.
std::unique_ptr<Contender> createPainterContender(const BenchLook& look);

/// The view of all samples between two prices, found by looking at each of them.
BenchView viewOf(const BenchData& data, double left, double right);

QColor curveColor(int curve);
