#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace Plain {

/// The ticks of an axis that may carry a label: all major ones, and the medium ones that are not equal to a
/// major one for the host; ascending. What is not finite is on no axis.
QList<double> labelCandidates(const QList<double>& major, const QList<double>& medium);

/// The leading digits that two numbers of n digits share; -1 for what cannot be compared.
int sharedIntegerDigits(long long a, long long b, int n);
/// The digits behind the point that two numbers share; -1 for what cannot be compared.
int sharedFractionDigits(double a, double b);
/// The leading digits that neighbours among the labels share at most, -1 without an answer.
int sharedDigits(const QList<double>& ticks);

/// The digits behind the point that labels need to show three more than they share.
int fractionLength(const QList<double>& ticks, int shared);

/// Whether labels can no longer be told apart.
bool labelsReadTheSame(const QList<double>& ticks, const std::function<QString(double)>& text);

/// The text of a label. `convert` is null while there is nothing to convert with.
struct LabelText {
    bool converts = false;
    std::function<double(double)> convert;
    QString unit;
    bool plus = false;
    int decimals = 10;

    QString of(double value) const;
};

}
