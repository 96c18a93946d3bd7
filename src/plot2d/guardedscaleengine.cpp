#include "guardedscaleengine_p.h"

#include "scaledivision_p.h"

QwtScaleDiv GuardedScaleEngine::divideScale(
    double x1, double x2, int maxMajorSteps, int maxMinorSteps, double stepSize) const
{
    if (ScaleDivision::isDivisible({x1, x2, maxMajorSteps, maxMinorSteps, stepSize, base()}))
        m_lastDivision = QwtLinearScaleEngine::divideScale(x1, x2, maxMajorSteps, maxMinorSteps, stepSize);
    return m_lastDivision;
}
