#pragma once

#include <database/decimal.h>

#include <optional>

/// Lends the future of a series the forward in use as its current quote, which is where a plot looks for it.
///
/// The forward of a run (put-call parity, the command line) is no data of the chain: the field gets its own
/// value back, so that no later commit stores the loan. A quote that somebody else writes meanwhile is the
/// field's own from then on.
class FutureQuote {
public:
    FutureQuote() = default;
    FutureQuote(const FutureQuote&) = delete;
    FutureQuote& operator=(const FutureQuote&) = delete;
    ~FutureQuote();

    /// The quote that a future on the chains' board has without the loan; none for an unknown future.
    std::optional<decimal> own(int futureIsinId) const;

    /// Sets the quote of a future on the chains' board; one lent to another future is taken back first.
    /// Writes nothing where the field has that value already. Nothing happens for an unknown future.
    void lend(int futureIsinId, double forward);
    void takeBack();

private:
    int m_futureIsinId = 0;
    std::optional<decimal> m_own;
    decimal m_lent;
};
