#include "monkey/messagewatch.h"

#include <cstddef>

namespace Monkey {

namespace {

QStringList messages;
QtMessageHandler otherHandler = nullptr;

const char* const alwaysExpected[] = {
    // The fixed size of the contents of Qwt's legend is that of no entries at all.
    "QWidget::setMinimumSize: (QwtLegendViewContents/QWidget) Negative sizes (-1,0) are not possible",
};

/// What Qt warns of inside of Qwt's panner, at presses that no window system sends: a second one without a
/// release, one on a canvas of no size.
const char* const expectedOfPress[] = {
    // Qwt's panner takes the image of the canvas with the old image of a drag on it.
    "QPixmap::setMask() mask size differs from pixmap size",
    // Qwt's panner takes the image of a canvas of no size.
    "QPainter::begin: Paint device returned engine == 0, type: 2",
};

template <std::size_t Size> void forgive(const char* const (&expected)[Size])
{
    for (const char* text : expected)
        messages.removeAll(QLatin1String(text));
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        messages.append(message);
    } else if (otherHandler) {
        otherHandler(type, context, message);
    }
}

}

MessageWatch::MessageWatch()
    : m_before(qInstallMessageHandler(collect))
{
    otherHandler = m_before;
    messages.clear();
}

MessageWatch::~MessageWatch()
{
    qInstallMessageHandler(m_before);
    otherHandler = nullptr;
}

QString MessageWatch::take()
{
    forgive(alwaysExpected);
    const QString all = messages.join(QStringLiteral("; "));
    messages.clear();
    return all;
}

QString MessageWatch::takeAfterPress()
{
    forgive(expectedOfPress);
    return take();
}

}
