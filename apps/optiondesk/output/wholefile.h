#pragma once

#include <QByteArray>
#include <QString>

/// Files that are written as a whole or not at all.
namespace WholeFile {

/// Replaces the content of a file, or makes the file. Until all of it is on the disk the old content stays,
/// also where the program is killed in the middle, and no part of the new one can be seen. Throws Exception
/// where that fails, naming the file and the reason in one line.
void write(const QString& fileName, const QByteArray& content);

}
