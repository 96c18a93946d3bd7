#pragma once

#include <QException>
#include <QString>

/// The host's exception, thrown by value. Its text is one line for a person to read.
class Exception : public QException {
public:
    explicit Exception(const QString& text);
    ~Exception() override;

    QString text() const;
    const char* what() const noexcept override;
    void raise() const override;
    Exception* clone() const override;

private:
    QString m_text;
    QByteArray m_utf8;
};
