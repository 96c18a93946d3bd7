#pragma once

#include "window/shownseries.h"

#include <QVector>

#include <functional>

/// Which of several series of one underlying to show first.
namespace SeriesChoice {

/// The position of the series of this expiry, -1 if there is none.
int ofExpiry(const QVector<QDate>& expiries, const QDate& expiry);

/// The position of the nearest of the series, which stand in the order of their expiry, that has at least ten
/// out-of-the-money options with an implied volatility; where none has as many, the one that has the most
/// (the nearest of equals); -1 where no series can be valued at all.
///
/// The series that have expired at the date of their prices come into question after all others. A series is
/// read (by its position) only when it is looked at.
int nearest(int count, const std::function<SeriesData(int)>& read, const std::optional<double>& givenForward);

}
