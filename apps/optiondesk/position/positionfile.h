#pragma once

#include "position/leg.h"

#include <QMap>
#include <QString>
#include <QVector>

namespace Position {

/// The positions of all underlyings, in one file (JSON) that is always written as a whole.
///
/// Several desks may share the file: each writes the positions of the underlyings that it has changed itself.
class PositionFile {
public:
    /// The user's file, in the platform's folder for the settings of the running application.
    static QString userFileName();

    /// Positions that are forgotten in the end.
    PositionFile() = default;
    /// Reads a file; one that is not there is made when something is kept. A file that holds no positions is
    /// renamed, so that it stays for whoever can mend it, and the positions begin empty; one that cannot be
    /// read or renamed stays as it is, and nothing is kept.
    explicit PositionFile(const QString& fileName);

    /// What is wrong with the file, naming it, in one line; empty if nothing is.
    QString problem() const { return m_problem; }

    /// Of an underlying, in the order of the table.
    QVector<Leg> legs(const QString& baseCode) const { return m_legs.value(baseCode); }

    /// Keeps them, legs that are not valid left out. Whether the file holds them now; true where there is
    /// none to be written.
    bool setLegs(const QString& baseCode, const QVector<Leg>& legs);

private:
    bool write();

    QString m_fileName;
    QString m_problem;
    QMap<QString, QVector<Leg>> m_legs;
    /// Whether the file holds them.
    bool m_isWritten = true;
};

}
