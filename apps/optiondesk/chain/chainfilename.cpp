#include "chain/chainfilename.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

QString trimmedWord(QString word)
{
    static const QRegularExpression ends(QStringLiteral("^[^\\p{L}]+|[^\\p{L})]+$"));
    return word.remove(ends).toUpper();
}

}

QString baseCodeFromFileName(const QString& fileName)
{
    static const QRegularExpression stop(QStringLiteral("[0-9_]"));
    static const QRegularExpression letters(QStringLiteral("\\p{L}+"));
    const QString name = QFileInfo(fileName).completeBaseName();
    QString leading = trimmedWord(name.left(name.indexOf(stop)));
    if (!leading.isEmpty())
        return leading;
    const QString word = letters.match(name).captured().toUpper();
    return word.isEmpty() ? name : word;
}

QDate dateFromFileName(const QString& fileName)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?<![0-9])((?:19|20|21)[0-9]{2})([-_.]?)([0-9]{2})\\2([0-9]{2})(?![0-9])"));
    QRegularExpressionMatchIterator matches = pattern.globalMatch(QFileInfo(fileName).completeBaseName());
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QDate date(match.captured(1).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
        if (date.isValid())
            return date;
    }
    return {};
}
