#pragma once

#include <database/field.h>

/// Lends the future of a series the forward in use as its current quote, which is where a plot looks for it.
///
/// The forward of a run (put-call parity, the command line) is no data of the chain: the field gets its own
/// value back, so that no later commit stores the loan.
class FutureQuote {
public:
    FutureQuote() = default;
    FutureQuote(const FutureQuote&) = delete;
    FutureQuote& operator=(const FutureQuote&) = delete;
    ~FutureQuote();

    /// Replaces the quote of a future on the chains' board; one lent before is taken back first. Nothing
    /// happens for an unknown future.
    void lend(int futureIsinId, double forward);
    void takeBack();

private:
    int m_futureIsinId = 0;
    QVariant m_own;
};
