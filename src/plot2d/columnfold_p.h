#pragma once

#include <algorithm>
#include <cstdlib>

/// No coordinate is further from zero, in pixels, so that differences are whole numbers as well.
constexpr int farAway = 1000000000;

/// What the samples that fall into one column of pixels come to, in pixels.
struct PixelColumn {
    int x = 0;
    /// Where the curve enters and leaves, and how far it reaches in between; low is not above high.
    int first = 0;
    int last = 0;
    int low = 0;
    int high = 0;

    /// Whether more than one sample fell into the column, so that a line leads from one to the other.
    bool hasLine = false;

    static PixelColumn at(int x, int y) { return {x, y, y, y, y, false}; }

    void append(int y)
    {
        hasLine = true;
        last = y;
        low = std::min(low, y);
        high = std::max(high, y);
    }

    void reach(int y)
    {
        low = std::min(low, y);
        high = std::max(high, y);
    }

    /// Whether a coordinate may have been further away than it can be here.
    bool isFar() const { return std::abs(x) == farAway || low == -farAway || high == farAway; }

    bool covers(int y) const { return low <= y && y <= high; }

    bool isBeside(const PixelColumn& other) const { return other.x == x + 1 || other.x == x - 1; }

    /// Whether the line to the column beside is drawn as joinTo() has it. Qt counts in parts of 1/65536 of a
    /// column for each row, cut off, and of longer lines may leave the last pixel out.
    bool canJoin(const PixelColumn& next) const
    {
        constexpr int longest = 181;
        return isBeside(next) && std::abs(next.first - last) <= longest;
    }

    /// Takes the pixels of a line from the last row here to the first row of the column beside: Qt draws all
    /// rows of it in the left column, only its end on the right in the right one.
    void joinTo(PixelColumn& next)
    {
        PixelColumn& left = x < next.x ? *this : next;
        const int from = x < next.x ? last : next.first;
        const int to = x < next.x ? next.first : last;
        if (from != to)
            left.reach(from < to ? to - 1 : to + 1);
    }

    /// Whether a line from here to there has no pixel that the vertical lines of both do not draw: with a pen
    /// of one pixel its pixels lie in these two columns, between its ends, and with a wider one as far around
    /// them as the columns' own.
    bool hidesLineTo(const PixelColumn& next) const
    {
        return isBeside(next) && covers(next.first) && next.covers(last);
    }
};
