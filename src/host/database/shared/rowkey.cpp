#include "database/shared/rowkey_p.h"

#include <QCryptographicHash>
#include <QUuid>

namespace {

// An index of PostgreSQL takes 2700 bytes.
constexpr int longestKey = 200;

QString newKey()
{
    return QLatin1Char('#') + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

}

QString RowKey::of(const Record& record, const QVector<int>& keyColumns)
{
    QString key;
    for (const int column : keyColumns) {
        const Field field = record.field(column);
        if (field.isNull())
            return newKey();
        QString text = field.toString();
        text.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
            .replace(QLatin1Char('|'), QLatin1String("\\|"));
        key += (key.isEmpty() ? QString() : QStringLiteral("|")) + text;
    }
    if (key.isEmpty())
        return newKey();
    // What a server cannot keep must not be in a key either.
    if (key.size() > longestKey || !key.isValidUtf16() || key.contains(QChar::Null)
        || key.startsWith(QLatin1Char('#')) || key.startsWith(QChar(QChar::ByteOrderMark))) {
        const QByteArray bytes(reinterpret_cast<const char*>(key.utf16()), key.size() * int(sizeof(ushort)));
        return QLatin1Char('#')
            + QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    }
    return key;
}

QString RowKey::repeated(const QString& key, int number)
{
    return key + QStringLiteral("|#%1").arg(number);
}
