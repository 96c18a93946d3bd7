#pragma once

#include <QByteArray>

namespace Monkey {

/// Tells what the process was doing when it dies in the middle of it: by a signal, by a sanitizer's finding,
/// or because it went on for more than a minute.
namespace LastWords {

/// To be called once.
void install();

/// From now on it does this, and has a minute from here.
void set(const QByteArray& words);
/// It does nothing that takes long.
void clear();

}

}
