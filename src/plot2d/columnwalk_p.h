#pragma once

#include "columnfold_p.h"

#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>

/// The place of a coordinate in whole pixels, halves away from zero as Qwt rounds, at most farAway from zero.
/// What is not a number counts as far away to the right.
inline int wholePixel(double coordinate)
{
    if (!(coordinate < farAway))
        return farAway;
    const double near = std::max<double>(coordinate, -farAway);
    // Conversion cuts towards zero.
    return static_cast<int>(near >= 0.0 ? near + 0.5 : near - 0.5);
}

/// A stretch of a curve's samples and the linear maps by which they are drawn. Samples are those of a
/// SampleIndex, or of a class that offers the same.
template <class Samples> struct SampleStretch {
    const Samples& samples;
    QwtScaleMap xMap;
    QwtScaleMap yMap;
    /// The first sample, and the one after the last.
    int begin = 0;
    int end = 0;

    int column(int i) const { return wholePixel(xMap.transform(samples.x(i))); }
    int row(double value) const { return wholePixel(yMap.transform(value)); }

    /// Whether all samples of the stretch and before it are finite.
    bool isFinite() const { return end <= samples.finiteCount(); }
    bool isFinite(int i) const
    {
        return i < samples.finiteCount() || (std::isfinite(samples.x(i)) && std::isfinite(samples.y(i)));
    }
    /// Whether columns never go back, so that samples of a column stand side by side.
    bool isAscending() const { return isFinite() && samples.isAscending(); }

    /// The samples that can be seen between two columns, with one more to each side; all of them where
    /// columns go back or samples are not finite.
    SampleStretch seenBetween(int leftColumn, int rightColumn) const
    {
        if (!isAscending())
            return *this;
        const bool leftToRight = !xMap.isInverting();
        const int firstSeen = firstWithout(
            begin, [&](int i) { return leftToRight ? column(i) < leftColumn : column(i) > rightColumn; });
        const int firstBehind = firstWithout(firstSeen,
            [&](int i) { return leftToRight ? column(i) <= rightColumn : column(i) >= leftColumn; });
        SampleStretch seen = *this;
        seen.begin = std::max(begin, firstSeen - 1);
        seen.end = std::min(end, firstBehind + 1);
        return seen;
    }

private:
    /// The first sample without a property that those before it have.
    template <class Property> int firstWithout(int first, const Property& property) const
    {
        int count = end - first;
        while (count > 0) {
            const int half = count / 2;
            if (property(first + half)) {
                first += half + 1;
                count -= half + 1;
            } else {
                count = half;
            }
        }
        return first;
    }
};

/// Walks a stretch of samples column by column. Of ascending samples it looks at some twenty of a column, and
/// asks for the bounds of the others.
template <class Samples> class ColumnWalk {
public:
    explicit ColumnWalk(const SampleStretch<Samples>& stretch)
        : m_stretch(stretch)
        , m_next(stretch.begin)
        , m_skips(stretch.isAscending())
    {
    }

    /// Whether there is another column; `joined` says whether the curve leads there without a break.
    bool next(PixelColumn& column, bool& joined)
    {
        joined = m_next > m_stretch.begin;
        while (m_next < m_stretch.end && !m_stretch.isFinite(m_next)) {
            ++m_next;
            joined = false;
        }
        if (m_next >= m_stretch.end)
            return false;
        m_begin = m_next;
        column = PixelColumn::at(m_stretch.column(m_next), row(m_next));
        if (m_skips)
            skipColumn(column);
        else
            walkColumn(column);
        m_hasBeenFar = m_hasBeenFar || column.isFar();
        return true;
    }

    /// Whether a column was so far away that lines from there may lead elsewhere than they should.
    bool hasBeenFar() const { return m_hasBeenFar; }

    /// The samples of the column that next() has found: the first, and the one after the last.
    int begin() const { return m_begin; }
    int end() const { return m_next; }

private:
    int row(int i) const { return m_stretch.row(m_stretch.samples.y(i)); }

    void walkColumn(PixelColumn& column)
    {
        for (++m_next;
             m_next < m_stretch.end && m_stretch.isFinite(m_next) && m_stretch.column(m_next) == column.x;
             ++m_next)
            column.append(row(m_next));
    }

    void skipColumn(PixelColumn& column)
    {
        m_next = columnEnd(column.x);
        m_lastLength = m_next - m_begin;
        if (m_lastLength == 1)
            return;
        const auto bounds = m_stretch.samples.bounds(m_begin, m_next);
        column.append(row(m_next - 1));
        // The values may run downwards on the screen.
        column.reach(m_stretch.row(bounds.low));
        column.reach(m_stretch.row(bounds.high));
    }

    /// The first sample of another column. Samples are mostly as many as in the column before.
    int columnEnd(int column) const
    {
        const auto isInside = [&](int i) { return m_stretch.column(i) == column; };
        int inside = m_begin;
        int outside = m_stretch.end;
        const int guess = std::min(m_begin + m_lastLength, m_stretch.end - 1);
        int step = 1;
        if (isInside(guess)) {
            inside = guess;
            while (inside + step < outside && isInside(inside + step)) {
                inside += step;
                step *= 2;
            }
            outside = std::min(outside, inside + step);
        } else {
            outside = guess;
            while (outside - step > inside && !isInside(outside - step)) {
                outside -= step;
                step *= 2;
            }
            inside = std::max(inside, outside - step);
        }
        while (outside - inside > 1) {
            const int middle = inside + (outside - inside) / 2;
            (isInside(middle) ? inside : outside) = middle;
        }
        return outside;
    }

    const SampleStretch<Samples>& m_stretch;
    int m_begin = 0;
    int m_next;
    bool m_skips;
    bool m_hasBeenFar = false;
    int m_lastLength = 1;
};
