#include "window/checkedbytes.h"

#include <QCryptographicHash>

QStringList CheckedBytes::toTexts(const QByteArray& bytes)
{
    const QByteArray sum = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    return {QString::fromLatin1(sum.toHex()), QString::fromLatin1(bytes.toBase64())};
}

std::optional<QByteArray> CheckedBytes::fromTexts(const QStringList& texts)
{
    if (texts.size() != 2)
        return std::nullopt;
    const QByteArray bytes = QByteArray::fromBase64(texts.last().toLatin1());
    return toTexts(bytes) == texts ? std::make_optional(bytes) : std::nullopt;
}
