#pragma once

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace TestSupport {

/// Outside of a session, as in a container, every application of Qt would complain that this is not set: this
/// one, where it is not made yet, and those that it starts.
inline void nameRuntimeFolder()
{
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR",
            QFile::encodeName(QStringLiteral("%1/runtime-%2").arg(QDir::tempPath()).arg(::geteuid())));
}

}
