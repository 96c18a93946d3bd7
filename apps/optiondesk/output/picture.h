#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

class QSize;
class QWidget;

/// Pictures of a window.
namespace Picture {

/// The image format for a file of this name, by its suffix: "png" without a suffix, empty for a suffix that
/// is no format that can be written.
QByteArray formatOf(const QString& fileName);

/// The suffixes that formatOf() knows, sorted.
QStringList suffixes();

/// The window as it is painted at this size in pixels, whether it is on a screen or not. A null image where
/// there is no memory for it.
QImage take(QWidget& window, const QSize& size);

/// Writes an image in the format of the file's suffix, as a whole or not at all: an older file of that name
/// stays where the writing fails. Throws Exception then, naming the file and the reason in one line.
void save(const QImage& image, const QString& fileName);

}
