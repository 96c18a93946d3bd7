#pragma once

#include <QtGlobal>

#include <cmath>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

/// Doubles of every kind: any bits, prices, halves of a decimal, whole numbers about the powers of two.
class Doubles {
public:
    explicit Doubles(quint64 seed)
        : m_engine(seed)
    {
    }

    double next()
    {
        switch (m_engine() % 5) {
        case 0:
            return anyBits();
        case 1:
            return std::ldexp(double(qint64(m_engine())), int(m_engine() % 140) - 130);
        case 2:
            return double(qint64(m_engine() % 2000000) - 1000000) / 1000.0;
        case 3:
            // Sums of a few powers of two, many of them exact halves of the last decimal.
            return double(qint64(m_engine() % 20001) - 10000) / double(1U << (m_engine() % 20));
        default:
            return std::ldexp(1.0, int(m_engine() % 70)) + double(qint64(m_engine() % 7) - 3);
        }
    }

private:
    double anyBits()
    {
        const quint64 bits = m_engine();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    std::mt19937_64 m_engine;
};

/// Texts of numbers in and a little out of the range.
class Texts {
public:
    explicit Texts(quint64 seed)
        : m_engine(seed)
    {
    }

    std::string next(int mostDecimals = 22)
    {
        if (m_engine() % 50 == 0)
            return special();
        std::string result(m_engine() % 2 ? "-" : "");
        append(result, 1 + m_engine() % (m_engine() % 4 == 0 ? 21 : 6));
        if (const std::size_t decimals = m_engine() % quint64(mostDecimals + 1)) {
            result += '.';
            append(result, decimals);
        }
        return result;
    }

private:
    std::string special()
    {
        static const char* const all[] = {"0", "1", "-1", "0.5", "-0.5", "0.000000000000000001",
            "-0.000000000000000001", "0.0000000000000000005", "170141183460469231731.687303715884105727",
            "-170141183460469231731.687303715884105727", "9223372036854775808", "-9223372036854775808",
            "0.999999999999999999", "13043817825.332782212349571806", "18446744073.709551616"};
        return all[m_engine() % std::size(all)];
    }

    void append(std::string& result, std::size_t digits)
    {
        // Rows of zeros and nines bring carries and halves about.
        const quint64 kind = m_engine() % 4;
        for (std::size_t i = 0; i < digits; ++i) {
            const char digit = static_cast<char>('0' + m_engine() % 10);
            result += kind == 0 && i > 0 ? '0' : kind == 1 && i > 0 ? '9' : digit;
        }
        if (kind == 0 && digits > 1 && m_engine() % 2)
            result.back() = '5';
    }

    std::mt19937_64 m_engine;
};
