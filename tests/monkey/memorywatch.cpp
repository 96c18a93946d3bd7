#include "monkey/memorywatch.h"

#include <QFile>

#include <cstdio>
#include <malloc.h>
#include <unistd.h>

namespace Monkey {

namespace {

constexpr qint64 mebibyte = 1024 * 1024;

#ifdef __SANITIZE_ADDRESS__
constexpr qint64 ofSanitizer = 512 * mebibyte;
#else
constexpr qint64 ofSanitizer = 0;
#endif

QString tooMuch(qint64 growth, qint64 most)
{
    if (growth <= most)
        return QString();
    return QStringLiteral("memory: grown by %1 MiB, more than %2")
        .arg(growth / mebibyte)
        .arg(most / mebibyte);
}

}

const qint64 MemoryWatch::mostAtOnce = 256 * mebibyte + ofSanitizer;
const qint64 MemoryWatch::mostInTheLongRun = 8 * mebibyte + ofSanitizer;

qint64 residentMemory()
{
    std::FILE* file = std::fopen("/proc/self/statm", "r");
    if (!file)
        return 0;
    long long total = 0;
    long long resident = 0;
    const bool known = std::fscanf(file, "%lld %lld", &total, &resident) == 2;
    std::fclose(file);
    return known ? resident * sysconf(_SC_PAGESIZE) : 0;
}

MemoryWatch::MemoryWatch()
    : m_atFirst(residentMemory())
{
}

QString MemoryWatch::afterStep() const
{
    return tooMuch(residentMemory() - m_atFirst, mostAtOnce);
}

QString MemoryWatch::betweenPlots()
{
    // What is free, but lies among what is not, belongs to nobody.
    malloc_trim(0);
    const qint64 now = residentMemory();
    if (m_afterFirstPlot == 0)
        m_afterFirstPlot = now;
    m_growth = now - m_afterFirstPlot;
    return tooMuch(m_growth, mostInTheLongRun);
}

}
