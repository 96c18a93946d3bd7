#pragma once

/// Which options a StrikeByMaxSessionModel shows: those with these numbers, -1 standing for any.
struct FilterParams {
    /// The letter of the option's type, 'C' or 'P'.
    int optionType = -1;
    int futIsinId = -1;
    int boardId = -1;
    int stockId = -1;
};

inline bool operator==(const FilterParams& a, const FilterParams& b)
{
    return a.optionType == b.optionType && a.futIsinId == b.futIsinId && a.boardId == b.boardId
        && a.stockId == b.stockId;
}
