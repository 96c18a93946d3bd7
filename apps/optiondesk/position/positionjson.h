#pragma once

#include "position/leg.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

/// Positions as JSON text: their legs by base code.
namespace PositionJson {

using Positions = QMap<QString, QVector<Position::Leg>>;

QByteArray written(const Positions& positions);

/// nullopt for any other text, and where a leg is not valid: half a position is a wrong one.
std::optional<Positions> read(const QByteArray& text);

}
