// In every fuzzer and every replay of a corpus: an input that makes Qt, Qwt or the library warn breaks the
// target.

#include "fuzzinput.h"

#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace {

void trapOnWarning(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    FUZZ_EXPECT(type != QtWarningMsg && type != QtCriticalMsg);
}

[[maybe_unused]] const QtMessageHandler handlerBefore = qInstallMessageHandler(trapOnWarning);

}
