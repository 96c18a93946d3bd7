#pragma once

#include <database/exception.h>

/// What is wrong with a chain's file, thrown by value. Its text is "FILE:LINE: reason", or "FILE: reason"
/// where the file as a whole is meant.
class ChainError : public Exception {
public:
    /// A line of 0 stands for the file as a whole; lines count from 1.
    ChainError(const QString& file, int line, const QString& reason);

    /// The error that a reader ends with when its progress function asked it to stop.
    static ChainError cancelled(const QString& file);

    QString file() const { return m_file; }
    int line() const { return m_line; }
    QString reason() const { return m_reason; }
    /// Whether the reading was stopped on request and nothing is wrong with the file.
    bool isCancelled() const { return m_cancelled; }

    void raise() const override;
    ChainError* clone() const override;

private:
    QString m_file;
    int m_line = 0;
    QString m_reason;
    bool m_cancelled = false;
};
