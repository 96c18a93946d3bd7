#include "goldenimage.h"

#include <QDir>
#include <QFontDatabase>
#include <QHash>

#include <qwt_global.h>

namespace {

// Loads it once; its family.
QString family(const QString& fileName)
{
    static QHash<QString, QString> families;
    QString& result = families[fileName];
    if (result.isEmpty()) {
        const QString path = QStringLiteral("/usr/share/fonts/truetype/dejavu/") + fileName;
        const int id = QFontDatabase::addApplicationFont(path);
        if (id < 0)
            qFatal("%s of the package fonts-dejavu-core is missing", qPrintable(path));
        result = QFontDatabase::applicationFontFamilies(id).constFirst();
    }
    return result;
}

int differentPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    }
    return count;
}

}

QString GoldenImage::otherVersions()
{
    constexpr bool isOther = QT_VERSION >= QT_VERSION_CHECK(6, 0, 0) || QWT_VERSION >= 0x060200;
    return isOther ? QStringLiteral("golden pictures are of Qt 5.15 and Qwt 6.1; these are Qt %1 and Qwt %2")
                         .arg(QStringLiteral(QT_VERSION_STR), QStringLiteral(QWT_VERSION_STR))
                   : QString();
}

QFont GoldenImage::font(int pointSize, const QString& fileName)
{
    QFont font(family(fileName), pointSize);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QString GoldenImage::difference(const QImage& picture, const QString& name)
{
    const QString file = name + QStringLiteral(".png");
    const QImage actual = picture.convertToFormat(QImage::Format_RGB32);
    const QString golden = QDir(QStringLiteral(GOLDEN_IMAGES)).filePath(file);
    if (qEnvironmentVariableIsSet("PLOT2D_REMAKE_GOLDEN"))
        return actual.save(golden) ? QString() : QStringLiteral("cannot write ") + golden;

    QImage expected(golden);
    QString text;
    if (expected.isNull()) {
        text = QStringLiteral("there is no ") + golden;
    } else if (expected.size() != actual.size()) {
        text = QStringLiteral("%1x%2 pixels instead of %3x%4")
                   .arg(actual.width())
                   .arg(actual.height())
                   .arg(expected.width())
                   .arg(expected.height());
    } else if (const int count = differentPixels(actual, expected.convertToFormat(QImage::Format_RGB32))) {
        text = QStringLiteral("%1 pixels differ").arg(count);
    }
    if (!text.isEmpty())
        actual.save(QDir(QStringLiteral(GOLDEN_DIFFERENCES)).filePath(file));
    return text;
}
