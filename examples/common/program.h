#pragma once

class QWidget;

namespace Program {

/// Shows a widget until it is closed; where the program's first argument names a picture, draws it there
/// instead. Gives what main() returns.
int show(QWidget& widget);

}
