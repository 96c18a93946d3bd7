#include "ticktext_p.h"

#include <QFontMetricsF>
#include <QHash>

#include <qwt_text_engine.h>

#include <algorithm>
#include <vector>

namespace {

/// One of the formats that Qwt leaves to its users.
constexpr auto rememberedFormat = static_cast<QwtText::TextFormat>(QwtText::OtherFormat + 19);

class RememberingEngine : public QwtPlainTextEngine {
public:
    QSizeF textSize(const QFont& font, int flags, const QString& text) const override
    {
        QHash<QString, QSizeF>& sizes = memoryOf(font, flags).sizes;
        const auto known = sizes.constFind(text);
        if (known != sizes.constEnd())
            return *known;
        constexpr int mostSizes = 1000;
        if (sizes.size() >= mostSizes)
            sizes.clear();
        return *sizes.insert(text, QwtPlainTextEngine::textSize(font, flags, text));
    }

    void textMargins(const QFont& font, const QString&, double& left, double& right, double& top,
        double& bottom) const override
    {
        const Memory& memory = memoryOf(font, anyFlags);
        left = 0.0;
        right = 0.0;
        top = memory.top;
        bottom = memory.bottom;
    }

    /// Nothing becomes of this format by itself.
    bool mightRender(const QString&) const override { return false; }

private:
    static constexpr int anyFlags = -1;

    struct Memory {
        QFont font;
        int flags = 0;
        /// Of the font on the screen that it was measured for.
        double height = 0.0;
        double top = 0.0;
        double bottom = 0.0;
        QHash<QString, QSizeF> sizes;
    };

    Memory& memoryOf(const QFont& font, int flags) const
    {
        const double height = QFontMetricsF(font).height();
        const auto known
            = std::find_if(m_memories.begin(), m_memories.end(), [&](const Memory& memory) {
                  return memory.height == height && (flags == anyFlags || memory.flags == flags)
                      && memory.font == font;
              });
        if (known != m_memories.end())
            return *known;

        // The fonts of two axes and of their measuring, drawn and printed.
        constexpr std::size_t mostMemories = 8;
        if (m_memories.size() >= mostMemories)
            m_memories.clear();
        Memory memory;
        memory.font = font;
        memory.flags = flags;
        memory.height = height;
        double none = 0.0;
        QwtPlainTextEngine::textMargins(font, QString(), none, none, memory.top, memory.bottom);
        m_memories.push_back(memory);
        return m_memories.back();
    }

    mutable std::vector<Memory> m_memories;
};

/// The engine is Qwt's, as long as this library is loaded.
class Registration {
public:
    Registration() { QwtText::setTextEngine(rememberedFormat, new RememberingEngine); }
    ~Registration() { QwtText::setTextEngine(rememberedFormat, nullptr); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
};

bool isClaimed(const QString& string, QwtText::TextFormat format)
{
    const QwtTextEngine* const engine = QwtText::textEngine(format);
    return engine && engine->mightRender(string);
}

bool isPlain(const QString& string)
{
    return !string.contains(QLatin1Char('<')) && !isClaimed(string, QwtText::MathMLText)
        && !isClaimed(string, QwtText::TeXText);
}

}

QwtText TickText::text(const QString& string)
{
    static const Registration registration;
    return isPlain(string) ? QwtText(string, rememberedFormat) : QwtText(string, QwtText::AutoText);
}
