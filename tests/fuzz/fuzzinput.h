#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

/// Doubles without a place in the heap, for the inner loop of a fuzzer.
template <std::size_t Capacity> struct FuzzDoubles {
    std::array<double, Capacity> values;
    std::size_t count = 0;

    const double* begin() const { return values.data(); }
    const double* end() const { return values.data() + count; }
    std::size_t size() const { return count; }
    double operator[](std::size_t i) const { return values[i]; }
};

/// Takes values off the bytes of a fuzzer; zeros when they have run out. At most one value in an expression:
/// compilers differ in the order of arguments.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_left(size)
    {
    }

    template <typename Value> Value take()
    {
        Value value{};
        const std::size_t size = m_left < sizeof(Value) ? m_left : sizeof(Value);
        // An input of no bytes may come without an address.
        if (size == 0)
            return value;
        std::memcpy(&value, m_data, size);
        m_data += size;
        m_left -= size;
        return value;
    }

    /// A whole number from 0 up to, but without, a limit of 256 at the most.
    int takeBelow(int limit) { return take<std::uint8_t>() % limit; }

    bool takeFlag() { return (take<std::uint8_t>() & 1U) != 0; }

    /// One of a table's entries.
    template <typename Value, std::size_t Size> const Value& takeOneOf(const Value (&table)[Size])
    {
        static_assert(Size <= 256);
        return table[std::size_t(takeBelow(int(Size)))];
    }

    /// A double of any bits; or, so that neighbours and round numbers are met as well, a small decimal
    /// number, the double next to the one before, or a number at which arithmetic changes.
    double takeDouble()
    {
        const auto kind = take<std::uint8_t>();
        if (kind < decimalKind)
            return m_last = take<double>();
        if (kind < nextKind)
            return m_last = decimalNumber(kind & 0x0fU);
        if (kind < specialKind)
            return m_last = std::nextafter(m_last, (kind & 1U) != 0 ? largest : -largest);
        return m_last = special(kind - specialKind);
    }

    /// A decimal number as prices are: up to 2^31 with up to seven decimals, or next to one.
    double takePrice()
    {
        const auto kind = take<std::uint8_t>();
        const double price = decimalNumber(kind & 0x07U);
        return (kind & 0x80U) == 0 ? price : std::nextafter(price, (kind & 0x40U) != 0 ? largest : -largest);
    }

    /// As many doubles as are left and fit in, and no more than a number of them.
    template <std::size_t Capacity>
    void takeDoubles(FuzzDoubles<Capacity>& doubles, std::size_t most = Capacity)
    {
        for (doubles.count = 0; m_left > 0 && doubles.count < most; ++doubles.count)
            doubles.values[doubles.count] = takeDouble();
    }

    bool isEmpty() const { return m_left == 0; }
    /// The bytes that are left.
    const std::uint8_t* data() const { return m_data; }
    std::size_t size() const { return m_left; }

private:
    static constexpr std::uint8_t decimalKind = 0x80;
    static constexpr std::uint8_t nextKind = 0xc0;
    static constexpr std::uint8_t specialKind = 0xe0;
    static constexpr double largest = std::numeric_limits<double>::max();

    double decimalNumber(unsigned decimals)
    {
        double value = take<std::int32_t>();
        for (; decimals > 0; --decimals)
            value /= 10.0;
        return value;
    }

    static double special(unsigned which)
    {
        using Limits = std::numeric_limits<double>;
        static constexpr double magnitudes[] = {0.0, Limits::infinity(), Limits::quiet_NaN(), Limits::max(),
            Limits::min(), Limits::denorm_min(), 0.5, 0.49999999999999994, 9007199254740992.0,
            4503599627370496.0, 9223372036854775808.0, 2147483648.0, 1e16, 1e-8, 1e-12, 1e-300};
        const double magnitude = magnitudes[which / 2];
        return (which & 1U) != 0 ? -magnitude : magnitude;
    }

    const std::uint8_t* m_data;
    std::size_t m_left;
    double m_last = 0.0;
};

/// Ends the process where a property does not hold: fuzzers and the replay take that for a finding.
#define FUZZ_EXPECT(condition)                                                                               \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            __builtin_trap();                                                                                \
    } while (false)
