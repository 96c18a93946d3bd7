#pragma once

#include <database/decimal.h>

#include <QDate>
#include <QString>
#include <QVector>

#include <optional>

enum class OptionType : char { Call = 'C', Put = 'P' };

/// What is known of one option; prices in the currency of the strike.
struct OptionQuote {
    OptionType type = OptionType::Call;
    decimal strike;
    std::optional<decimal> bid;
    std::optional<decimal> ask;
    std::optional<decimal> last;
    std::optional<decimal> settlement;
    std::optional<qint64> volume;
    std::optional<qint64> openInterest;
    /// The volatility that the source states, as a fraction (0.30 is 30 %).
    std::optional<double> volatility;

    /// The price to value the option by: the middle of bid and ask where both are positive and not
    /// crossed, else the settlement, else the last price.
    std::optional<double> price() const;
};

/// The options of one expiry, ascending by strike, a call before the put of the same strike.
struct OptionSeries {
    /// Invalid where the source does not say.
    QDate expiry;
    /// The future's or forward's price where the source states one.
    std::optional<double> forward;
    QVector<OptionQuote> quotes;
};

/// The options of one underlying.
struct OptionChain {
    QString baseCode;
    /// The day of the prices; invalid where the source does not say.
    QDate asOf;
    /// The largest of 1, 0.5, 0.25, 0.1, 0.05, 0.025, 0.01 ... that all prices and strikes are multiples of.
    decimal priceStep;
    /// Decimals of prices and strikes, 0 to 18.
    short decimals = 2;
    /// Ascending by expiry; at least one, none of them empty.
    QVector<OptionSeries> series;
};
