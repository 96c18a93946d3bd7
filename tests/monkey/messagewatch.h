#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace Monkey {

/// Collects the warnings and worse messages of Qt and Qwt as long as it lives, but those that are expected;
/// there may be one at a time.
class MessageWatch {
public:
    MessageWatch();
    ~MessageWatch();
    MessageWatch(const MessageWatch&) = delete;
    MessageWatch& operator=(const MessageWatch&) = delete;

    /// Those since the last call, in one text.
    QString take();
    /// The same after a press of a mouse button, which more is expected of.
    QString takeAfterPress();

private:
    QtMessageHandler m_before;
};

}
