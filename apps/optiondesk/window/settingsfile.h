#pragma once

#include <QByteArray>
#include <QString>

/// Files of settings that others may have changed or damaged.
namespace SettingsFile {

/// More than the desk ever writes, in bytes.
constexpr qint64 largestSize = 4 << 20;

/// Whether the text of a settings file can be parsed without harm. Values in Qt's binary form, which the desk
/// never writes, may name any type and any length: reading one may take all memory.
bool isHarmless(const QByteArray& content);

/// Whether a file can be read and is too large or not harmless. False for one that is not there.
bool isDangerous(const QString& fileName);

/// Gives a file another name in its folder that no file has yet, beginning with its own and ".broken". The
/// new path, empty where that fails.
QString setAside(const QString& fileName);

}
