#pragma once

#include <QException>
#include <QString>

/// The host's exception, thrown by value. Its text is one line for a person to read.
class Exception : public QException {
public:
    /// The text should be one line.
    explicit Exception(const QString& text);
    ~Exception() override;

    /// The text as it was given.
    QString text() const;
    /// The text in UTF-8, which lives as long as the exception.
    const char* what() const noexcept override;
    /// Throws a copy.
    void raise() const override;
    /// A copy that the caller owns.
    Exception* clone() const override;

private:
    QString m_text;
    QByteArray m_utf8;
};
