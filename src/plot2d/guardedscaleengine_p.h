#pragma once

#include <qwt_scale_engine.h>

/// Qwt's linear engine, kept from the bounds and steps that it cannot divide in reasonable time and memory
/// (also those that Qwt's own auto-scale finds in a curve's samples): these get the last division made, an
/// empty one at first.
class GuardedScaleEngine : public QwtLinearScaleEngine {
public:
    QwtScaleDiv divideScale(
        double x1, double x2, int maxMajorSteps, int maxMinorSteps, double stepSize) const override;

private:
    mutable QwtScaleDiv m_lastDivision;
};
