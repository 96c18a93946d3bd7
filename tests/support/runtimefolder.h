#pragma once

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace TestSupport {

/// Outside of a session, as in a container, an application of Qt that is made before this complains that
/// there is no such folder, and so do the programs that it starts.
inline void nameRuntimeFolder()
{
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR",
            QFile::encodeName(QStringLiteral("%1/runtime-%2").arg(QDir::tempPath()).arg(::geteuid())));
}

}
