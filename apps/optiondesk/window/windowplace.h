#pragma once

#include <QStringList>

class QWidget;

/// Where a window is on the screen, as texts that outlive the desk.
namespace WindowPlace {

/// The corner of its frame, its size while it is neither maximized nor full screen, and whether it is
/// maximized.
QStringList toTexts(const QWidget& window);

/// Places a window. Of a place that is on no screen any more only the size is taken, of a size that is larger
/// than all screens as much as fits. Texts of no place are ignored.
void restore(QWidget& window, const QStringList& texts);

}
