#pragma once

#include "host/basic_models/options.h"

#include <basic_models/filterparams.h>

#include <map>
#include <random>

namespace TestSupport {

/// A securities table of few strikes, sessions and ids that changes at random.
class RandomOptions {
public:
    explicit RandomOptions(quint64 seed);

    Table* table() const { return m_table.get(); }
    void destroyTable() { m_table.reset(); }
    /// Makes one change of the table.
    void step();
    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(m_random); }
    FilterParams filter();
    QString baseCode();

private:
    QVector<Record> rows(int count);
    QVector<Record> some(int oneOf);
    OptionRow row();
    void change();

    std::mt19937_64 m_random;
    std::unique_ptr<Table> m_table;
};

/// What a strike model is to show: the first option of each strike.
struct ExpectedStrikes {
    std::map<decimal, Record> first;
    int session = 0;
};

/// The strikes of all sessions.
ExpectedStrikes expectedStrikes(const Table* table, const QString& baseCode);
/// The strikes of the largest session among the options that pass.
ExpectedStrikes expectedStrikes(const Table* table, const QString& baseCode, const FilterParams& filter);

}
