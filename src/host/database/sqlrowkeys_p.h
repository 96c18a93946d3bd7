#pragma once

#include <QVector>
#include <QtGlobal>

#include <optional>

/// The keys that keep stored rows in their order. They are far apart, so that rows which come between two
/// others find keys there and nothing else has to be written.
namespace SqlRowKeys {

/// The distance of the keys of rows that follow each other.
constexpr qint64 stride = qint64(1) << 20;

/// Ascending keys for a number of rows above a key and below another, either of which may be missing. Nothing
/// if there are too few.
std::optional<QVector<qint64>> between(std::optional<qint64> before, std::optional<qint64> after, int count);

}
