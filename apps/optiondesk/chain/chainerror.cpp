#include "chain/chainerror.h"

#include "chain/chaintexts.h"

namespace {

QString fullText(const QString& file, int line, const QString& reason)
{
    if (line == 0)
        return QStringLiteral("%1: %2").arg(file, reason);
    return QStringLiteral("%1:%2: %3").arg(file, QString::number(line), reason);
}

}

ChainError::ChainError(const QString& file, int line, const QString& reason)
    : Exception(fullText(file, line, reason))
    , m_file(file)
    , m_line(line)
    , m_reason(reason)
{
}

ChainError ChainError::cancelled(const QString& file)
{
    ChainError error(file, 0, ChainTexts::tr("cancelled"));
    error.m_cancelled = true;
    return error;
}

void ChainError::raise() const
{
    throw *this;
}

ChainError* ChainError::clone() const
{
    return new ChainError(*this);
}
