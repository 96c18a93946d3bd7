#include "../fuzzinput.h"

#include <plot2d/pricebased2dplotcurve.h>

#include <QDataStream>
#include <QtGlobal>

#include <climits>
#include <cstdlib>
#include <memory>

namespace {

enum Fault {
    Property = 'p',
    Memory = 'm',
    Leak = 'l',
    Overflow = 'o',
    Division = 'd',
    Cast = 'c',
    Library = 's',
    Warning = 'w'
};

/// A few bytes that no generator of random numbers hits within seconds: they are found one by one, by what
/// they let run.
bool isReached(const std::uint8_t* data, std::size_t size)
{
    static const char wanted[] = {'f', 'l', 'a', 'w'};
    for (std::size_t i = 0; i < sizeof wanted; ++i) {
        if (i >= size || data[i] != std::uint8_t(wanted[i]))
            return false;
    }
    return true;
}

/// The same through the shared library: a record with a type that the program itself never compares.
bool isReachedInLibrary(const std::uint8_t* data, std::size_t size)
{
    static PriceBased2dPlotCurve curve(nullptr, QStringLiteral("control"));
    curve.setDataType(-1);
    QDataStream stream(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    PriceBased2dPlotCurve::CurveParams params;
    PriceBased2dPlotCurve::read(stream, params);
    curve.setDataType(params.dataType);
    return params.isValid && curve.dataType() != -1 && params.dataType != 0;
}

}

/// Bugs on purpose, one for each letter that CONTROL_FAULT is defined as: a fuzzer that does not find them
/// finds nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr Fault fault = Fault(CONTROL_FAULT);
    const bool reached = fault == Library ? isReachedInLibrary(data, size) : isReached(data, size);
    if (!reached)
        return 0;
    volatile double zero = 0.0;
    volatile int number = INT_MAX;
    [[maybe_unused]] static volatile double sink = 0.0;
    switch (fault) {
    case Memory:
        sink = std::unique_ptr<double[]>(new double[size]())[size];
        break;
    case Leak: {
        [[maybe_unused]] void* volatile lost = std::malloc(100);
        lost = nullptr;
        break;
    }
    case Overflow:
        number = number + 1;
        break;
    case Division:
        sink = 1.0 / zero;
        break;
    case Cast:
        number = int(1e10 + zero);
        break;
    case Warning:
        qWarning("nobody has announced this");
        break;
    case Property:
    case Library:
        FUZZ_EXPECT(false);
    }
    return 0;
}
