#include "support/testmain.h"

#include <pricing/smoothingspline.h>

#include <cmath>
#include <random>

using Pricing::smoothed;
using Vector = std::vector<double>;

namespace {

double meanSquare(const Vector& values, const Vector& curve, const Vector& errors)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i)
        sum += std::pow((values[i] - curve[i]) / errors[i], 2);
    return sum / static_cast<double>(values.size());
}

// Irregular abscissas from 0 to about 10.
Vector abscissas(std::size_t size, std::mt19937_64& random)
{
    std::uniform_real_distribution<double> gap(0.01, 1.0);
    Vector result{0.0};
    while (result.size() < size)
        result.push_back(result.back() + gap(random) * 20.0 / static_cast<double>(size));
    return result;
}

}

class tst_smoothingspline : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fewValuesStay();
    void straightLineStays();
    void regressionLineOfLargeErrors();
    void missesByTheErrors();
    void recoversCurveUnderNoise();
    void exactValuesStay();
    void crowdedAbscissas();
};

void tst_smoothingspline::fewValuesStay()
{
    QCOMPARE(smoothed({}, {}, {}), Vector());
    QCOMPARE(smoothed({1.0}, {5.0}, {9.0}), Vector{5.0});
    QCOMPARE(smoothed({1.0, 2.0}, {5.0, -5.0}, {9.0, 9.0}), (Vector{5.0, -5.0}));
}

void tst_smoothingspline::straightLineStays()
{
    std::mt19937_64 random(1);
    const Vector x = abscissas(100, random);
    Vector y;
    for (const double value : x)
        y.push_back(3.0 - 2.0 * value);
    const Vector curve = smoothed(x, y, Vector(x.size(), 0.1));
    for (std::size_t i = 0; i < x.size(); ++i)
        QVERIFY(std::abs(curve[i] - y[i]) < 1e-9);
}

void tst_smoothingspline::regressionLineOfLargeErrors()
{
    // The regression line of these values is y = 0.7 + 0.6 x.
    const Vector curve = smoothed({0.0, 1.0, 2.0, 3.0}, {1.0, 1.0, 1.0, 3.4}, Vector(4, 10.0));
    const Vector expected{0.52, 1.24, 1.96, 2.68};
    for (std::size_t i = 0; i < expected.size(); ++i)
        QVERIFY2(std::abs(curve[i] - expected[i]) < 1e-6, qPrintable(QString::number(curve[i], 'g', 12)));
}

void tst_smoothingspline::missesByTheErrors()
{
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        std::mt19937_64 random(seed);
        std::normal_distribution<double> noise;
        std::uniform_real_distribution<double> size(0.001, 0.2);
        const Vector x = abscissas(20 + seed * 4, random);
        Vector y, errors;
        for (const double value : x) {
            errors.push_back(size(random));
            y.push_back(std::sin(value) + errors.back() * noise(random));
        }
        const double miss = meanSquare(y, smoothed(x, y, errors), errors);
        QVERIFY2(
            miss <= 1.0 + 1e-9 && miss > 0.99, qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(miss)));
    }
}

void tst_smoothingspline::recoversCurveUnderNoise()
{
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        std::mt19937_64 random(seed);
        std::normal_distribution<double> noise(0.0, 0.1);
        const Vector x = abscissas(200, random);
        Vector y, truth;
        for (const double value : x) {
            truth.push_back(std::sin(value));
            y.push_back(truth.back() + noise(random));
        }
        const Vector errors(x.size(), 0.1);
        const double distance = std::sqrt(meanSquare(truth, smoothed(x, y, errors), errors));
        QVERIFY2(distance < 0.8, qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(distance)));
    }
}

void tst_smoothingspline::exactValuesStay()
{
    std::mt19937_64 random(3);
    const Vector x = abscissas(100, random);
    Vector y;
    for (const double value : x)
        y.push_back(std::cos(3.0 * value));
    const Vector curve = smoothed(x, y, Vector(x.size(), 1e-6));
    for (std::size_t i = 0; i < x.size(); ++i)
        QVERIFY(std::abs(curve[i] - y[i]) < 1e-4);
}

void tst_smoothingspline::crowdedAbscissas()
{
    const Vector x{0.0, 1.0, 1.000001, 1.000002, 2.0, 50.0};
    const Vector y{1.0, 2.0, 0.0, 3.0, 1.0, 4.0};
    for (const double error : {1e-6, 0.1, 100.0}) {
        const Vector errors(x.size(), error);
        const Vector curve = smoothed(x, y, errors);
        for (const double value : curve)
            QVERIFY(std::isfinite(value));
        QVERIFY(meanSquare(y, curve, errors) <= 1.0 + 1e-6);
    }
}

PLOT2D_TEST_MAIN(tst_smoothingspline)
#include "tst_smoothingspline.moc"
