#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

/// Which ticks may carry a label, and the digits that neighbouring labels share. Pure functions over tick
/// values.
namespace TickLabels {

/// Values beyond this to either side have no readable label: they are neither measured nor compared.
constexpr double largestValue = 1e16;

/// The ticks that may carry a label, ascending: the major ticks and those medium ticks that lie on no major
/// one (by commonFuzzyCompare). Ticks that are not finite are left out.
QList<double> candidates(const QList<double>& majorTicks, const QList<double>& mediumTicks);

/// The integer part of a value, towards zero, where a fraction within 1e-8 of a whole unit counts as one: 3
/// for 2.9999999999. A value that is no 64-bit integer is its own integer part.
double fuzzyIntegerPart(double value);

/// The largest number of leading digits that two neighbouring labels share, over all pairs in their order.
///
/// A pair with integer parts of different lengths sets the result back to 0, whatever was found before; pairs
/// of negative integer parts find nothing, and where no pair finds anything the result is the smallest int.
/// No result for an empty list, for ticks that do not strictly ascend and for values beyond largestValue.
std::optional<int> equalDigits(const QList<double>& ticks);

/// The number of leading digits that two non-negative integers of n digits share: 3 for 1234 and 1238. 0 for
/// equal integers and n of 1; -1 for a negative integer, one beyond largestValue, and n outside 1 to 16.
int equalDigitsInIntegerPart(long long a, long long b, int n);

/// The number of leading fraction digits, at most 10, that two values share: 2 for 12.345 and 12.349. -1
/// unless the first is less than the second, and for values beyond largestValue.
int equalDigitsInFractionPart(double a, double b);

/// The number of fraction digits that labels need which show three digits more than the shared ones (10 at
/// the most): the largest over the ticks, without zeros at the end. 0 for negative equal digits. A tick that
/// is no number ends the search; infinite ones are not allowed.
int maxFractionLength(const QList<double>& ticks, int equalDigits);

/// Whether a division has become finer than its labels can show: two neighbours are closer than 1e-8, or at
/// least one pair of neighbours has equal texts and none has different ones. Pairs with an empty text say
/// nothing.
bool readTheSame(const QList<double>& ticks, const std::function<QString(double)>& text);

}
