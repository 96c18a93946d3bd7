#pragma once

#include <QByteArray>
#include <QList>

namespace Plain {

/// What is stored of a curve.
struct StoredCurve {
    bool valid = false;
    bool visible = false;
    int type = 0;
};

/// The bytes of a legend's state: three numbers of four bytes (1, 5 and the number of curves), the highest
/// byte first, and six bytes of each curve.
QByteArray storedBytes(const QList<StoredCurve>& curves);

/// The records that count: those that are whole and valid, the first of each type. None for other headers.
QList<StoredCurve> storedCurves(const QByteArray& bytes);

}
