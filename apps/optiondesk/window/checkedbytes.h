#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

/// Bytes for readers that trust them: kept as texts with a sum that tells damage.
namespace CheckedBytes {

QStringList toTexts(const QByteArray& bytes);

/// The bytes; nothing for texts that are not those that toTexts() gave for them.
std::optional<QByteArray> fromTexts(const QStringList& texts);

}
