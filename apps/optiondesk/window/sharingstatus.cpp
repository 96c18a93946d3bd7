#include "window/sharingstatus.h"

#include "window/texts.h"

#include <database/sharedstorage.h>

#include <QFontMetrics>

namespace {

/// Longer places are cut, for the status bar is the series' as well.
constexpr int widestPlace = 32; // characters of average width

}

SharingStatus::SharingStatus(SharedStorage& storage, QWidget* parent)
    : QLabel(parent)
    , m_storage(&storage)
{
    setObjectName(QStringLiteral("sharingStatus"));
    setTextFormat(Qt::PlainText);
    setAccessibleName(tr("Shared database"));
    setContentsMargins(6, 0, 6, 0);
    connect(m_storage, SIGNAL(statusChanged()), SLOT(tell()));
    tell();
}

void SharingStatus::tell()
{
    if (!m_storage) {
        clear();
        return;
    }
    const QString problem = Texts::oneLine(m_storage->problem());
    const QFontMetrics metrics = fontMetrics();
    const QString place
        = metrics.elidedText(m_storage->place(), Qt::ElideMiddle, widestPlace * metrics.averageCharWidth());
    QString text = problem.isEmpty() ? place : tr("No connection to %1").arg(place);
    const int waiting = m_storage->waitingCommits();
    if (!problem.isEmpty() && waiting > 0)
        text += QStringLiteral(" \u00b7 ")
            + (waiting == 1 ? tr("1 change waits") : tr("%n changes wait", "", waiting));
    setText(text);
    setToolTip(problem.isEmpty()
            ? tr("The chains are shared with the other desks on %1.").arg(m_storage->place())
            : problem);
}
