#include "basic_views/conversion.h"
#include "support/testmain.h"

#include <memory>

namespace {

/// Points of a size from a reference price.
class PointsFrom : public Conversion {
public:
    PointsFrom(double reference, double point, bool* isDestroyed)
        : m_reference(reference)
        , m_point(point)
        , m_isDestroyed(isDestroyed)
    {
    }
    ~PointsFrom() override { *m_isDestroyed = true; }

    double forward(double value) const override { return (value - m_reference) / m_point; }
    double backward(double value) const override { return m_reference + value * m_point; }

private:
    double m_reference;
    double m_point;
    bool* m_isDestroyed;
};

}

class tst_conversion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void methodsAreCalledThroughTheBase();
    void isDestroyedThroughTheBase();
};

void tst_conversion::methodsAreCalledThroughTheBase()
{
    bool isDestroyed = false;
    const PointsFrom points(100.0, 0.5, &isDestroyed);
    const Conversion& conversion = points;
    const ConversionMethod forward = &Conversion::forward;
    const ConversionMethod backward = &Conversion::backward;
    QCOMPARE((conversion.*forward)(101.0), 2.0);
    QCOMPARE((conversion.*backward)(2.0), 101.0);
}

void tst_conversion::isDestroyedThroughTheBase()
{
    bool isDestroyed = false;
    std::unique_ptr<Conversion> conversion = std::make_unique<PointsFrom>(0.0, 1.0, &isDestroyed);
    QVERIFY(!isDestroyed);
    conversion.reset();
    QVERIFY(isDestroyed);
}

PLOT2D_TEST_MAIN(tst_conversion)
#include "tst_conversion.moc"
