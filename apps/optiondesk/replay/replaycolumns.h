#pragma once

#include <QStringList>

#include <array>

/// The prices of a quote.
enum class QuoteField { Bid, Ask, Last };
constexpr int quoteFieldCount = int(QuoteField::Last) + 1;

/// Where in a row of a file of recorded quotes what stands.
///
/// Of several names for the same the one that stands first in its list is taken: "instrument" before
/// "symbol". Case, blanks, underscores and dots do not matter. The prices have the names that a chain's file
/// has.
class ReplayColumns {
public:
    ReplayColumns() = default;
    explicit ReplayColumns(const QStringList& header);

    /// Indices of the cells, -1 for none.
    int time() const { return m_time; }
    int instrument() const { return m_instrument; }
    int price(QuoteField field) const { return m_prices[std::size_t(field)]; }

    /// Whether there are a time, an instrument and a price.
    bool isComplete() const;
    /// How many of the five are known.
    int knownCount() const;
    /// How many cells of a row are needed for all of them.
    int cellCount() const;
    /// A name that two columns have of which one is needed; empty if there is none.
    QString repeatedName() const { return m_repeatedName; }

private:
    int find(const QStringList& header, const QStringList& names);
    void findPrices(const QStringList& header);
    std::array<int, 5> all() const;

    int m_time = -1;
    int m_instrument = -1;
    std::array<int, quoteFieldCount> m_prices = {-1, -1, -1};
    QString m_repeatedName;
};
