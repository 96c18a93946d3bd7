#include "differential/cases.h"

#include <QElapsedTimer>
#include <QtDebug>

#include <algorithm>

namespace {

qint64 numberFrom(const char* variable, qint64 otherwise)
{
    bool isNumber = false;
    const qint64 number = qEnvironmentVariable(variable).toLongLong(&isNumber);
    return isNumber ? number : otherwise;
}

}

void Differential::Findings::note(const char* what, const QString& plain, const QString& library)
{
    m_text += QStringLiteral("  %1: plain %2, library %3\n").arg(QLatin1String(what), plain, library);
}

QString Differential::firstDifference(
    const char* subject, quint64 seed, int cost, const std::function<void(Random&, Findings&)>& run)
{
    const qint64 only = numberFrom("PLOT2D_CASE", -1);
    const qint64 usual = numberFrom("PLOT2D_CASES", 40000);
    const qint64 first = std::max<qint64>(only, 0);
    const qint64 end = only >= 0 ? only + 1 : std::max<qint64>(usual / cost, 1);
    qint64 compared = 0;
    qint64 leftOut = 0;
    QElapsedTimer timer;
    timer.start();
    for (qint64 number = first; number < end; ++number) {
        Random random(seed, static_cast<quint64>(number));
        Findings findings;
        run(random, findings);
        compared += findings.comparisons() > 0 ? 1 : 0;
        leftOut += findings.leftOut();
        if (findings.differ())
            return QStringLiteral("%1, seed %2, PLOT2D_CASE=%3\n%4")
                .arg(QLatin1String(subject))
                .arg(seed)
                .arg(number)
                .arg(findings.text());
    }
    qInfo("%s: %lld of %lld cases, each for %d, in %lld ms, %lld comparisons left out", subject,
        static_cast<long long>(compared), static_cast<long long>(end - first), cost,
        static_cast<long long>(timer.elapsed()), static_cast<long long>(leftOut));
    return compared > 0 || only >= 0
        ? QString()
        : QStringLiteral("%1: nothing is compared\n").arg(QLatin1String(subject));
}
