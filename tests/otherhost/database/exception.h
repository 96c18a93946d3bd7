#pragma once

#include <QString>

#include <stdexcept>

/// What the host throws.
class Exception : public std::runtime_error {
public:
    explicit Exception(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }

    QString text() const { return QString::fromUtf8(what()); }
};
