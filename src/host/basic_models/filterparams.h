#pragma once

/// Which options a StrikeByMaxSessionModel takes; a field of -1 filters nothing.
struct FilterParams {
    /// The exchange.
    int stockId = -1;
    /// The board.
    int boardId = -1;
    /// The ISIN id of the options' future.
    int futIsinId = -1;
    /// 'C' for calls, 'P' for puts.
    int optionType = -1;

    /// Whether all four fields are equal.
    friend bool operator==(const FilterParams& a, const FilterParams& b)
    {
        return a.stockId == b.stockId && a.boardId == b.boardId && a.futIsinId == b.futIsinId
            && a.optionType == b.optionType;
    }
    /// Whether a field differs.
    friend bool operator!=(const FilterParams& a, const FilterParams& b) { return !(a == b); }
};
