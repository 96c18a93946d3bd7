#include "support/testmain.h"

#include <limits>

// Compiled as in a release, without assertions: what stands behind them no build for tests goes by otherwise.
#include "../src/plot2d/plot2dcommon.cpp"

class tst_plot2dcommon_noassertions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integerLengthOfInfinity();
};

void tst_plot2dcommon_noassertions::integerLengthOfInfinity()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QCOMPARE(Plot2dCommon::integerLength(infinity), 1);
    QCOMPARE(Plot2dCommon::integerLength(-infinity), 1);
}

PLOT2D_TEST_MAIN(tst_plot2dcommon_noassertions)
#include "tst_plot2dcommon_noassertions.moc"
