#pragma once

/// Which options a StrikeByMaxSessionModel takes; a field of -1 filters nothing.
struct FilterParams {
    int stockId = -1;
    int boardId = -1;
    /// The ISIN id of the options' future.
    int futIsinId = -1;
    /// 'C' for calls, 'P' for puts.
    int optionType = -1;

    friend bool operator==(const FilterParams& a, const FilterParams& b)
    {
        return a.stockId == b.stockId && a.boardId == b.boardId && a.futIsinId == b.futIsinId
            && a.optionType == b.optionType;
    }
    friend bool operator!=(const FilterParams& a, const FilterParams& b) { return !(a == b); }
};
