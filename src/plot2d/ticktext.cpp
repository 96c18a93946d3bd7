#include "ticktext_p.h"

#include "rememberingtextengine_p.h"

#include <typeinfo>

namespace {

/// One of the formats that Qwt leaves to its users, which nobody uses yet; QwtText::AutoText where all are
/// used.
QwtText::TextFormat freeFormat()
{
    // The enumeration holds no number beyond. Others take the first ones.
    constexpr int last = 127;
    for (int number = last; number >= QwtText::OtherFormat; --number) {
        const auto format = static_cast<QwtText::TextFormat>(number);
        if (!QwtText::textEngine(format))
            return format;
    }
    return QwtText::AutoText;
}

/// The engine is Qwt's, as long as this library is loaded.
class Registration {
public:
    Registration()
    {
        if (m_format != QwtText::AutoText)
            QwtText::setTextEngine(
                m_format, new RememberingTextEngine(std::make_unique<QwtPlainTextEngine>()));
    }
    ~Registration() { QwtText::setTextEngine(m_format, nullptr); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

    QwtText::TextFormat format() const { return m_format; }

private:
    QwtText::TextFormat m_format = freeFormat();
};

/// Whether Qwt's own engine of plain texts would draw the text; a host may have put another in its place.
bool isPlain(const QString& string)
{
    const QwtTextEngine* const engine = QwtText::textEngine(string, QwtText::AutoText);
    return engine == QwtText::textEngine(QwtText::PlainText) && typeid(*engine) == typeid(QwtPlainTextEngine);
}

}

QwtText::TextFormat TickText::rememberedFormat()
{
    static const Registration registration;
    return registration.format();
}

QwtText TickText::text(const QString& string)
{
    return QwtText(string, isPlain(string) ? rememberedFormat() : QwtText::AutoText);
}
