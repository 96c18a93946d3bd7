#include "window/settingsfile.h"

#include <QFile>
#include <QFileInfo>

namespace {

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isOctalDigit(char c)
{
    return c >= '0' && c <= '7';
}

// The number that begins at a position, of which that behind it becomes the new one.
template <typename IsDigit> char number(const QByteArray& text, IsDigit isDigit, int base, int* position)
{
    const int begin = *position;
    while (*position < text.size() && isDigit(text.at(*position)))
        ++*position;
    return char(text.mid(begin, *position - begin).right(4).toUInt(nullptr, base));
}

// What the parser of the format makes of quotes and escapes; where one value ends is of no interest here.
QByteArray unescaped(const QByteArray& content)
{
    QByteArray text;
    text.reserve(content.size());
    int i = 0;
    while (i < content.size()) {
        const char c = content.at(i++);
        if (c == '"')
            continue;
        if (c != '\\' || i == content.size()) {
            text += c;
            continue;
        }
        if (content.at(i) == 'x')
            text += number(content, &isHexDigit, 16, &++i);
        else if (isOctalDigit(content.at(i)))
            text += number(content, &isOctalDigit, 8, &i);
        else if (content.at(i) != '\n' && content.at(i) != '\r')
            text += content.at(i++);
        else
            ++i;
    }
    return text;
}

}

bool SettingsFile::isHarmless(const QByteArray& content)
{
    const QByteArray text = unescaped(content);
    return !text.contains("@Variant(") && !text.contains("@DateTime(");
}

bool SettingsFile::isDangerous(const QString& fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    return file.size() > largestSize || !isHarmless(file.readAll());
}

QString SettingsFile::setAside(const QString& fileName)
{
    constexpr int mostKept = 1000;
    for (int i = 1; i <= mostKept; ++i) {
        QString name = fileName + QStringLiteral(".broken") + (i > 1 ? QString::number(i) : QString());
        // A file of the new name makes this fail.
        if (QFile::rename(fileName, name))
            return name;
        if (!QFileInfo::exists(name))
            break;
    }
    return QString();
}
