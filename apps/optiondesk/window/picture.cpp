#include "window/picture.h"

#include <database/exception.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPalette>
#include <QSaveFile>
#include <QWidget>

namespace {

Exception failure(const QString& fileName, const QString& reason)
{
    return Exception(QStringLiteral("%1: %2").arg(fileName, reason));
}

}

QByteArray Picture::formatOf(const QString& fileName)
{
    const QByteArray suffix = QFileInfo(fileName).suffix().toLower().toLatin1();
    if (suffix.isEmpty())
        return QByteArrayLiteral("png");
    return QImageWriter::supportedImageFormats().contains(suffix) ? suffix : QByteArray();
}

QStringList Picture::suffixes()
{
    QStringList names;
    const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
    for (const QByteArray& format : formats)
        names.append(QString::fromLatin1(format));
    names.sort();
    return names;
}

QImage Picture::take(QWidget& window, const QSize& size)
{
    // A window that is not on a screen yet is laid out as if it were, free of the limits of the screen's
    // size.
    const bool shown = window.isVisible();
    if (!shown)
        window.setAttribute(Qt::WA_DontShowOnScreen);
    window.resize(size);
    window.show();
    QCoreApplication::processEvents();
    QImage image(size, QImage::Format_RGB32);
    image.fill(window.palette().color(QPalette::Window));
    window.render(&image);
    if (!shown) {
        window.hide();
        window.setAttribute(Qt::WA_DontShowOnScreen, false);
    }
    return image;
}

void Picture::save(const QImage& image, const QString& fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        throw failure(fileName, file.errorString());
    QImageWriter writer(&file, formatOf(fileName));
    if (!writer.write(image))
        throw failure(fileName, writer.errorString());
    if (!file.commit())
        throw failure(fileName, file.errorString());
}
