#include "window/desksession.h"

#include <database/settings.h>

#include <QEvent>
#include <QLoggingCategory>
#include <QTimer>
#include <QWidget>

namespace {

Q_LOGGING_CATEGORY(sessionLog, "optiondesk.session", QtWarningMsg)

// A list of one text comes back as a text, and bytes are told apart from none of them.
bool readTheSame(const QVariant& a, const QVariant& b)
{
    const bool areBytes = a.type() == QVariant::ByteArray || b.type() == QVariant::ByteArray;
    return areBytes ? a.toByteArray() == b.toByteArray() : a.toStringList() == b.toStringList();
}

}

QString DeskSession::pathOf(const QString& key)
{
    return QStringLiteral("session/") + key;
}

DeskSession::DeskSession(Settings* settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
{
}

void DeskSession::keep(const QString& key, const Read& read, const Apply& apply)
{
    m_entries.append({key, read, apply});
    if (m_settings)
        m_known.insert(key, m_settings->value(pathOf(key)));
}

void DeskSession::restore(const QStringList& except)
{
    for (const Entry& entry : qAsConst(m_entries)) {
        const QVariant value = m_known.value(entry.key);
        if (!value.isValid() || except.contains(entry.key))
            continue;
        qCDebug(sessionLog) << entry.key << "was" << value;
        entry.apply(value);
    }
}

void DeskSession::watch(QWidget* window)
{
    constexpr int interval = 30000; // ms
    window->installEventFilter(this);
    auto* const timer = new QTimer(this);
    connect(timer, SIGNAL(timeout()), this, SLOT(save()));
    timer->start(interval);
}

bool DeskSession::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close)
        save();
    return QObject::eventFilter(watched, event);
}

void DeskSession::save()
{
    if (!m_settings)
        return;
    for (const Entry& entry : qAsConst(m_entries)) {
        const QVariant value = entry.read();
        if (readTheSame(value, m_known.value(entry.key)))
            continue;
        m_known.insert(entry.key, value);
        qCDebug(sessionLog) << entry.key << "is now" << value;
        m_settings->setValue(pathOf(entry.key), value);
    }
}
