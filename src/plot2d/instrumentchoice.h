#pragma once

#include <QString>

/// Which future a plot shows: an exact instrument, by ISIN id and board id, or the future of a base code with
/// the earliest expiry. Setting one way clears the other.
class InstrumentChoice {
public:
    enum class Kind { None, ExactInstrument, EarliestOfBaseCode };

    /// Ids below 1 and an empty code are ignored.
    void setIsinId(int id)
    {
        if (id > 0) {
            m_baseCode.clear();
            m_isinId = id;
        }
    }

    void setBoardId(int id)
    {
        if (id > 0) {
            m_baseCode.clear();
            m_boardId = id;
        }
    }

    void setBaseCode(const QString& code)
    {
        if (!code.isEmpty()) {
            m_isinId = -1;
            m_boardId = -1;
            m_baseCode = code;
        }
    }

    /// -1 while not set.
    int isinId() const { return m_isinId; }
    int boardId() const { return m_boardId; }
    QString baseCode() const { return m_baseCode; }

    /// None while neither way is complete, and while both have been begun.
    Kind kind() const
    {
        const bool hasIsin = m_isinId > 0;
        const bool hasBoard = m_boardId > 0;
        const bool hasCode = !m_baseCode.isEmpty();
        if (hasIsin && hasBoard && !hasCode)
            return Kind::ExactInstrument;
        return !hasIsin && !hasBoard && hasCode ? Kind::EarliestOfBaseCode : Kind::None;
    }

private:
    int m_isinId = -1;
    int m_boardId = -1;
    QString m_baseCode;
};
