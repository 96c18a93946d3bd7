#pragma once

#include "chain/dateparser.h"
#include "chain/optionchain.h"

/// One option as a row states it.
struct ReadOption {
    int line = 0;
    /// The number of the expiry in ChainBuilder::expiries(), -1 where it is not stated.
    int expiry = -1;
    /// The volatility still in the column's unit.
    OptionQuote quote;
    std::optional<double> forward;
    std::optional<double> underlying;
};

/// Gathers the options of a file and makes the chain when all of them are in.
class ChainBuilder {
public:
    /// As many options as a chain may have.
    static constexpr int maxOptions = 200000;

    explicit ChainBuilder(const QString& fileName);

    DateColumn& expiries() { return m_expiries; }
    /// Takes an option. Throws ChainError for one too many.
    void add(const ReadOption& option);
    /// Takes a row's day of the prices; false for a text that is no date.
    bool addQuoteDate(const QString& cell, int line);
    /// Says that the volatilities are in percent. Otherwise they are if their median is over 2: hardly
    /// anything has a volatility over 200 %, or one under 2 %.
    void setPercent() { m_percent = true; }

    /// The chain without its base code, the day from the rows only. Throws ChainError when there is no
    /// option, when the days of the prices differ, and when an option occurs twice with different values (the
    /// same values merge).
    ///
    /// A series' forward is the median of the forwards in its rows. Prices of the underlying stand for
    /// forwards unless several series have the same: that is the price of an underlying traded for cash.
    OptionChain finish();

private:
    QDate expiryOf(const ReadOption& option) const;
    QDate singleQuoteDate() const;
    void scaleVolatilities();
    void sortAndMerge();
    void addForwards(OptionChain* chain) const;

    QString m_fileName;
    DateColumn m_expiries;
    DateColumn m_quoteDates;
    /// The first line of each of the quote dates.
    QVector<int> m_quoteDateLines;
    QVector<ReadOption> m_options;
    bool m_percent = false;
};
