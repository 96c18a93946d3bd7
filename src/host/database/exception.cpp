#include "database/exception.h"

Exception::Exception(const QString& text)
    : m_text(text)
    , m_utf8(text.toUtf8())
{
}

Exception::~Exception() = default;

QString Exception::text() const
{
    return m_text;
}

const char* Exception::what() const noexcept
{
    return m_utf8.constData();
}

void Exception::raise() const
{
    throw *this;
}

Exception* Exception::clone() const
{
    return new Exception(*this);
}
