#include "monkey/invariants.h"

#include <c_api/common.h>

#include <algorithm>
#include <cmath>

namespace Monkey {

namespace {

/// Qwt makes no more major ticks than these, however many steps there are, and has two for the ends.
constexpr int mostMajorTicks = 10000 + 2;
/// Labels beyond this number are compared with their neighbours only.
constexpr int mostComparedLabels = 300;

QString inFull(double value)
{
    return QString::number(value, 'g', 17);
}

/// Equal neighbours count as ascending; those of a tick that is not a number do not.
bool isAscending(const QList<double>& ticks)
{
    return std::adjacent_find(ticks.cbegin(), ticks.cend(), [](double a, double b) { return !(a <= b); })
        == ticks.cend();
}

QString brokenTicks(const Snapshot::Scale& scale)
{
    const QList<double>& major = scale.ticks[QwtScaleDiv::MajorTick];
    const int mostMajor = scale.step == 0.0 ? 2 * scale.maxMajor + 3 : mostMajorTicks;
    if (major.size() > mostMajor)
        return QStringLiteral("%1 major ticks").arg(major.size());
    for (const QList<double>& ticks : scale.ticks) {
        if (!std::all_of(ticks.cbegin(), ticks.cend(), [](double tick) { return std::isfinite(tick); }))
            return QStringLiteral("a tick that is not finite");
        // At the end of the doubles' precision neighbours fall together.
        if (!std::is_sorted(ticks.cbegin(), ticks.cend()))
            return QStringLiteral("ticks that do not ascend");
        // Minor ticks fill the distances of the major ones, and those to the bounds.
        if (ticks.size() > (major.size() + 2) * (scale.maxMinor + 1))
            return QStringLiteral("%1 ticks of one kind for %2 major ones")
                .arg(ticks.size())
                .arg(major.size());
    }
    return QString();
}

QString brokenEntry(const QString& title, const QStringList& entry)
{
    if (entry.size() != 1)
        return QStringLiteral("%1 entries for a curve").arg(entry.size());
    if (entry.first() != title)
        return QStringLiteral("the entry \"%1\" for the curve \"%2\"").arg(entry.first(), title);
    return QString();
}

QString named(const char* name, const QString& broken)
{
    return broken.isEmpty() ? QString() : QString::fromLatin1(name) + QStringLiteral(": ") + broken;
}

}

QString Invariants::scale(const Snapshot::Scale& scale)
{
    if (!std::isfinite(scale.lower) || !std::isfinite(scale.upper) || !(scale.lower < scale.upper))
        return QStringLiteral("bounds %1 and %2").arg(inFull(scale.lower), inFull(scale.upper));
    return brokenTicks(scale);
}

QString Invariants::quoteLine(const Snapshot::QuoteLine& line)
{
    const auto isFinite
        = [](const QPointF& sample) { return std::isfinite(sample.x()) && std::isfinite(sample.y()); };
    const auto isSame = [](const QPointF& a, const QPointF& b) {
        const auto isSameNumber
            = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
        return isSameNumber(a.x(), b.x()) && isSameNumber(a.y(), b.y());
    };
    if (std::equal(
            line.samples.cbegin(), line.samples.cend(), line.given.cbegin(), line.given.cend(), isSame))
        return QString();
    if (line.samples.size() != 2)
        return QStringLiteral("%1 samples").arg(line.samples.size());
    const QPointF& low = line.samples.first();
    const QPointF& high = line.samples.last();
    if (!isFinite(low) || !isFinite(high) || low.x() != high.x() || !(low.y() < high.y()))
        return QStringLiteral("from (%1, %2) to (%3, %4)")
            .arg(inFull(low.x()), inFull(low.y()), inFull(high.x()), inFull(high.y()));
    return QString();
}

QString Invariants::labels(const Snapshot::Labels& labels)
{
    const QList<double>& shown = labels.shown;
    if (!isAscending(shown))
        return QStringLiteral("they do not ascend");
    if (!std::includes(labels.candidates.cbegin(), labels.candidates.cend(), shown.cbegin(), shown.cend()))
        return QStringLiteral("one is no candidate");
    if (labels.rectangles.size() != shown.size())
        return QStringLiteral("%1 rectangles for %2").arg(labels.rectangles.size()).arg(shown.size());
    for (int i = 1; i < shown.size(); ++i) {
        // Ticks that have fallen together may both stay where their labels have no text.
        if (shown[i - 1] == shown[i] && labels.rectangles[i].isValid())
            return QStringLiteral("%1 twice").arg(inFull(shown[i]));
        for (int j = shown.size() > mostComparedLabels ? i - 1 : 0; j < i; ++j) {
            if (labels.rectangles[j].intersects(labels.rectangles[i]))
                return QStringLiteral("%1 and %2 overlap").arg(inFull(shown[j]), inFull(shown[i]));
        }
    }
    return QString();
}

QString Invariants::legend(const Snapshot::Legend& legend)
{
    if (!legend.present)
        return QString();
    if (legend.strangers > 0)
        return QStringLiteral("%1 widgets are not the legend's").arg(legend.strangers);
    if (legend.entries.size() != legend.curves.size())
        return QStringLiteral("%1 entries for %2 curves")
            .arg(legend.entries.size())
            .arg(legend.curves.size());
    for (int i = 0; i < legend.curves.size(); ++i) {
        const QString broken = brokenEntry(legend.curves[i], legend.entries[i]);
        if (!broken.isEmpty())
            return broken;
    }
    return QString();
}

QString Invariants::followedValues(const Snapshot& before, const Snapshot& after)
{
    const bool moved = before.values.lower != after.values.lower || before.values.upper != after.values.upper;
    if (!moved || !after.autoScale || before.valuesByQwt)
        return QString();
    const QString where
        = QStringLiteral("moved to %1 .. %2").arg(inFull(after.values.lower), inFull(after.values.upper));
    if (!after.autoScaleRange)
        return where + QStringLiteral(" where the auto-scale has no range");
    auto [low, high] = *after.autoScaleRange;
    if (commonFuzzyCompare(low, high)) {
        low -= 1.0;
        high += 1.0;
    }
    if (after.values.lower == low && after.values.upper == high)
        return QString();
    return where + QStringLiteral(" instead of %1 .. %2").arg(inFull(low), inFull(high));
}

QString Invariants::followedLabels(const Snapshot::Labels& labels)
{
    const QList<double>& left = labels.left;
    return std::includes(labels.candidates.cbegin(), labels.candidates.cend(), left.cbegin(), left.cend())
        ? QString()
        : QStringLiteral("they are of another scale");
}

bool Invariants::pricesMoved(const Snapshot& before, const Snapshot& after)
{
    return before.prices.lower != after.prices.lower || before.prices.upper != after.prices.upper;
}

QString Invariants::signalsOf(const Step& step, const Signals& heard, bool pricesMoved)
{
    QStringList all = heard.wrong;
    const bool tells = std::holds_alternative<Turn>(step) || std::holds_alternative<Release>(step);
    if (!tells && heard.labels > 0)
        all.append(QStringLiteral("scales that the user has not moved"));
    // Qt itself moves the mouse when it handles events and another widget has come under it.
    const bool mayMove = isOfUser(step) || std::holds_alternative<HandleEvents>(step)
        || std::holds_alternative<StartOver>(step);
    if (!mayMove && heard.autoScale > 0)
        all.append(QStringLiteral("the auto-scale should be off without the user"));
    if (tells && pricesMoved && heard.labels == 0)
        all.append(QStringLiteral("prices that move unheard"));
    const bool mayCheck = isOfUser(step) || std::holds_alternative<ToggleEntry>(step)
        || std::holds_alternative<RestoreLegend>(step) || std::holds_alternative<RestoreUnchecked>(step);
    if (!mayCheck && heard.visibility > 0)
        all.append(QStringLiteral("an entry that nobody checked"));
    return named("signals", all.join(QStringLiteral(", ")));
}

QString Invariants::broken(const Snapshot& before, const Snapshot& after, bool byUser)
{
    QStringList all{named("prices", scale(after.prices)), named("values", scale(after.values)),
        named("labels", labels(after.labels)), named("legend", legend(after.legend))};
    for (const Snapshot::QuoteLine& line : after.quoteLines)
        all.append(named("quote line", quoteLine(line)));
    if (after.autoScale != after.expectedAutoScale)
        all.append(QStringLiteral("auto-scale: it is %1").arg(after.autoScale ? "on" : "off"));
    if (after.foreignItems > 0)
        all.append(QStringLiteral("items: %1 are of another plot").arg(after.foreignItems));
    if (byUser)
        all.append({named("vertical scale", followedValues(before, after)),
            named("labels left", followedLabels(after.labels))});
    all.removeAll(QString());
    return all.join(QStringLiteral("; "));
}

}
