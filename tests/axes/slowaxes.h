#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <functional>
#include <utility>

/// The rules of the axes once more, step by step and without care for speed, to compare the quick ones with.
namespace SlowAxes {

/// -1 where the answer is not known, as in all the functions below.
constexpr int unknown = -1;

using Pairs = QList<std::pair<double, double>>;
using Rectangle = std::function<QRect(double)>;
using Text = std::function<QString(double)>;

QList<double> candidates(const QList<double>& majorTicks, const QList<double>& mediumTicks);

double integerPart(double value);
/// Rounded half up as Plot2dCommon::roundValue() does.
double rounded(double value, int decimals);

int equalDigits(const QList<double>& ticks);
int equalIntegerDigits(long long a, long long b, int n);
int equalFractionDigits(double a, double b);
int maxFractionLength(const QList<double>& ticks, int equalDigits);

/// The state of an axis with regard to its current quote.
struct Quote {
    double value = -1.0;
    bool enabled = false;
    bool inside = false;
    int index = unknown;
};

int quoteIndex(const QList<double>& ticks, double quote);
Pairs overlaps(const QList<double>& ticks, const Quote& quote, const Rectangle& rectangle);
bool removeOneTick(const std::pair<double, double>& pair, const Quote& quote, QList<double>& ticks);

struct Labels {
    QList<double> ticks;
    int quoteIndex = unknown;
    int equalDigits = unknown;
};

/// The labels that an axis keeps of its candidates. The quote's index is found here.
Labels labels(const QList<double>& candidates, Quote quote, bool paintedOnce, const Rectangle& rectangle);

bool ticksShrinked(const QList<double>& ticks, const Text& text);

/// The ticks of a division, in Qwt's order of types: minor, medium, major.
struct Ticks {
    QList<double> lists[3];
};

/// The ticks after the anchor step for a rescale factor, given the arguments of the division.
Ticks anchored(const Ticks& ticks, double factor, int strikePrecision, double x1, double x2);

}
