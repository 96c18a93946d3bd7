#pragma once

#include <QString>

/// Which future a plot shows: an exact instrument, by ISIN id and board id, or the future of a base code with
/// the earliest expiry. Setting one way clears the other.
class InstrumentChoice {
public:
    /// The way in which the future is told.
    enum class Kind {
        /// Neither way is complete.
        None,
        /// By ISIN id and board id.
        ExactInstrument,
        /// The future of a base code with the earliest expiry.
        EarliestOfBaseCode
    };

    /// The instrument's id on every board. Below 1 it is ignored.
    void setIsinId(int id)
    {
        if (id > 0) {
            m_baseCode.clear();
            m_isinId = id;
        }
    }

    /// The board on which the instrument is traded. An id below 1 is ignored.
    void setBoardId(int id)
    {
        if (id > 0) {
            m_baseCode.clear();
            m_boardId = id;
        }
    }

    /// The code of the underlying. An empty one is ignored.
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
    /// -1 while not set.
    int boardId() const { return m_boardId; }
    /// Empty while not set.
    QString baseCode() const { return m_baseCode; }

    /// The way that is complete; None while an ISIN id or a board id is missing and there is no base code.
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
