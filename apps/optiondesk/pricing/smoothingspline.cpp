#include "smoothingspline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace Pricing {

namespace {

// Bounds of the weight of the curvature, in units of that which balances the two parts of the equations.
constexpr double weakest = 1e-12;
constexpr double strongest = 1e20;
constexpr int bisections = 60;

using Vector = std::vector<double>;

// Reinsch's equations in the notation of Green and Silverman ("Nonparametric Regression and Generalized
// Linear Models", 1994, chapter 2): (R + a Q'E Q) c = Q'y for the second derivatives c at the inner
// abscissas, where E holds the squared errors; the curve is y - a E Q c.
class SplineEquations {
public:
    SplineEquations(const Vector& abscissas, const Vector& values, const Vector& errors);

    // The weight at which the diagonals of R and a Q'E Q have the same sum.
    double balancedWeight() const { return m_integralTrace / m_penaltyTrace; }
    // Value minus curve.
    Vector residuals(double weight) const;

private:
    // Column j of Q has the entries left, middle, right in the rows j, j + 1, j + 2.
    struct Column {
        double left, middle, right;
    };

    Vector solvedBands(double weight) const;

    std::size_t m_size;
    Vector m_gaps;
    Vector m_squaredErrors;
    std::vector<Column> m_columns;
    Vector m_rightSide;
    double m_integralTrace = 0.0;
    double m_penaltyTrace = 0.0;
    // Diagonals of R and of Q'E Q, the main one first.
    Vector m_integral0, m_integral1;
    Vector m_penalty0, m_penalty1, m_penalty2;
};

SplineEquations::SplineEquations(const Vector& abscissas, const Vector& values, const Vector& errors)
    : m_size(abscissas.size())
{
    for (std::size_t i = 0; i + 1 < m_size; ++i)
        m_gaps.push_back(abscissas[i + 1] - abscissas[i]);
    for (const double error : errors)
        m_squaredErrors.push_back(error * error);
    for (std::size_t j = 0; j + 2 < m_size; ++j) {
        const double left = 1.0 / m_gaps[j];
        const double right = 1.0 / m_gaps[j + 1];
        m_columns.push_back({left, -left - right, right});
        m_rightSide.push_back((values[j + 2] - values[j + 1]) * right - (values[j + 1] - values[j]) * left);
    }

    const std::size_t inner = m_columns.size();
    const Vector& e = m_squaredErrors;
    for (std::size_t j = 0; j < inner; ++j) {
        const Column& q = m_columns[j];
        m_integral0.push_back((m_gaps[j] + m_gaps[j + 1]) / 3.0);
        m_integral1.push_back(m_gaps[j + 1] / 6.0);
        m_penalty0.push_back(
            q.left * q.left * e[j] + q.middle * q.middle * e[j + 1] + q.right * q.right * e[j + 2]);
        const Column next = j + 1 < inner ? m_columns[j + 1] : Column{0.0, 0.0, 0.0};
        m_penalty1.push_back(q.middle * next.left * e[j + 1] + q.right * next.middle * e[j + 2]);
        m_penalty2.push_back(j + 2 < inner ? q.right * m_columns[j + 2].left * e[j + 2] : 0.0);
        m_integralTrace += m_integral0.back();
        m_penaltyTrace += m_penalty0.back();
    }
}

// Equations that cannot be told apart leave a pivot of zero and have no solution: it is NaN.
double quotient(double dividend, double divisor)
{
    return divisor == 0.0 ? std::numeric_limits<double>::quiet_NaN() : dividend / divisor;
}

// Solves the equations by L D L' of the five bands.
Vector SplineEquations::solvedBands(double weight) const
{
    const std::size_t inner = m_columns.size();
    Vector pivots(inner), lower1(inner, 0.0), lower2(inner, 0.0), solution = m_rightSide;
    for (std::size_t j = 0; j < inner; ++j) {
        double pivot = m_integral0[j] + weight * m_penalty0[j];
        double next = m_integral1[j] + weight * m_penalty1[j];
        if (j >= 1) {
            pivot -= lower1[j - 1] * lower1[j - 1] * pivots[j - 1];
            next -= lower1[j - 1] * lower2[j - 1] * pivots[j - 1];
            solution[j] -= lower1[j - 1] * solution[j - 1];
        }
        if (j >= 2) {
            pivot -= lower2[j - 2] * lower2[j - 2] * pivots[j - 2];
            solution[j] -= lower2[j - 2] * solution[j - 2];
        }
        pivots[j] = pivot;
        lower1[j] = quotient(next, pivot);
        lower2[j] = quotient(weight * m_penalty2[j], pivot);
    }
    for (std::size_t j = inner; j-- > 0;) {
        solution[j] = quotient(solution[j], pivots[j]);
        if (j + 1 < inner)
            solution[j] -= lower1[j] * solution[j + 1];
        if (j + 2 < inner)
            solution[j] -= lower2[j] * solution[j + 2];
    }
    return solution;
}

Vector SplineEquations::residuals(double weight) const
{
    const Vector curvature = solvedBands(weight);
    Vector result(m_size, 0.0);
    for (std::size_t j = 0; j < m_columns.size(); ++j) {
        result[j] += m_columns[j].left * curvature[j];
        result[j + 1] += m_columns[j].middle * curvature[j];
        result[j + 2] += m_columns[j].right * curvature[j];
    }
    for (std::size_t i = 0; i < m_size; ++i)
        result[i] *= weight * m_squaredErrors[i];
    return result;
}

bool isWithinErrors(const Vector& residuals, const Vector& errors)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < residuals.size(); ++i)
        sum += (residuals[i] / errors[i]) * (residuals[i] / errors[i]);
    return sum <= static_cast<double>(residuals.size());
}

// The residuals of the smoothest curve within the errors; they grow with the weight.
Vector smoothestResiduals(const SplineEquations& equations, const Vector& errors)
{
    double low = std::log(equations.balancedWeight() * weakest);
    double high = std::log(equations.balancedWeight() * strongest);
    Vector straight = equations.residuals(std::exp(high));
    if (isWithinErrors(straight, errors))
        return straight;
    Vector best(errors.size(), 0.0);
    for (int i = 0; i < bisections; ++i) {
        const double middle = (low + high) / 2.0;
        Vector trial = equations.residuals(std::exp(middle));
        if (isWithinErrors(trial, errors)) {
            low = middle;
            best = std::move(trial);
        } else {
            high = middle;
        }
    }
    return best;
}

}

Vector smoothed(const Vector& abscissas, const Vector& values, const Vector& errors)
{
    if (values.size() < 3)
        return values;
    const Vector residuals = smoothestResiduals(SplineEquations(abscissas, values, errors), errors);
    Vector result = values;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] -= residuals[i];
    return result;
}

}
