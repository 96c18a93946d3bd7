#pragma once

#include <QFont>
#include <QImage>
#include <QString>

/// Pictures that the tests compare pixel by pixel with those that a person has approved.
namespace GoldenImage {

/// Why pictures are not compared: the golden ones are of Qt 5.15 and Qwt 6.1, and other versions draw texts
/// and lines otherwise. Empty with these versions.
QString otherVersions();

/// A font for golden pictures, loaded from a file of Debian's package fonts-dejavu-core, so that neither the
/// user's choice nor another font of the name matters. Ends the test program where the file is missing.
QFont font(int pointSize, const QString& fileName = QStringLiteral("DejaVuSans.ttf"));

/// Empty if the picture equals the golden one of that name, else what is different; the picture is kept then
/// beside the test program. With PLOT2D_REMAKE_GOLDEN in the environment the golden picture is replaced
/// instead.
QString difference(const QImage& picture, const QString& name);

}
