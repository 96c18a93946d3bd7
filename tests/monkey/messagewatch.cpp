#include "monkey/messagewatch.h"

#include <algorithm>
#include <iterator>

namespace Monkey {

namespace {

QStringList messages;
QtMessageHandler otherHandler = nullptr;

/// What Qt warns of on the way of events that no window system sends (a second press without a release, a
/// press on a canvas of no size), inside of Qwt, and what a legend without entries asks of its layout.
const char* const expected[] = {
    // Qwt's panner takes the image of the canvas with the old image of a drag on it.
    "QPixmap::setMask() mask size differs from pixmap size",
    // Qwt's panner takes the image of a canvas of no size.
    "QPainter::begin: Paint device returned engine == 0, type: 2",
    // The fixed size of the legend's contents is that of no entries at all.
    "QWidget::setMinimumSize: (QwtLegendViewContents/QWidget) Negative sizes (-1,0) are not possible",
};

bool isExpected(const QString& message)
{
    return std::any_of(std::begin(expected), std::end(expected),
        [&message](const char* text) { return message == QLatin1String(text); });
}

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        if (!isExpected(message))
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
    const QString all = messages.join(QStringLiteral("; "));
    messages.clear();
    return all;
}

}
