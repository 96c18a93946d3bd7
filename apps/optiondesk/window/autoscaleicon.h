#pragma once

#include <QIcon>

class QPalette;

/// The icon of the auto-scale, a curve between two bars that hold it, in the colours of a palette's buttons.
QIcon autoScaleIcon(const QPalette& palette);
