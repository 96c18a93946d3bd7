#include "output/picture.h"

#include "output/wholefile.h"

#include <database/exception.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPalette>
#include <QWidget>

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
    const double ratio = window.devicePixelRatioF();
    QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
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
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, formatOf(fileName));
    if (!writer.write(image))
        throw Exception(QStringLiteral("%1: %2").arg(fileName, writer.errorString()));
    WholeFile::write(fileName, bytes);
}
