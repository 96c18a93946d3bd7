#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

/// Takes values off the bytes of a fuzzer; zeros when they have run out.
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

    /// A double of any bits, or, so that neighbours and round numbers are met as well, a small decimal
    /// number.
    double takeDouble()
    {
        constexpr std::uint8_t decimalKind = 0x80;
        const auto kind = take<std::uint8_t>();
        if (kind < decimalKind)
            return take<double>();
        double value = take<std::int32_t>();
        for (int i = kind & 0x0f; i > 0; --i)
            value /= 10.0;
        return value;
    }

    /// As many doubles as are left, a given number at the most.
    std::vector<double> takeDoubles(std::size_t most)
    {
        std::vector<double> values;
        while (m_left > 0 && values.size() < most)
            values.push_back(takeDouble());
        return values;
    }

    bool isEmpty() const { return m_left == 0; }

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
};

/// Ends the process where a property does not hold: fuzzers and the replay take that for a finding.
#define FUZZ_EXPECT(condition)                                                                               \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            __builtin_trap();                                                                                \
    } while (false)
