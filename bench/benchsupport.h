#ifndef QUORVANE_BENCHSUPPORT_H
#define QUORVANE_BENCHSUPPORT_H

// Process figures shared by the benchmarks: peak resident memory and
// processor time. Linux gives the most; other systems what they can.

#include <QFile>

#include <algorithm>
#include <ctime>

#ifdef Q_OS_UNIX
#include <climits>
#include <sys/resource.h>
#include <time.h>
#endif
#ifdef Q_OS_LINUX
#include <malloc.h>
#endif

// A memory figure of /proc/self/status ("VmRSS:", "VmHWM:") in MiB, or -1.
inline double statusMiB(const char *field)
{
#ifdef Q_OS_LINUX
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith(field))
                return line.mid(qstrlen(field)).trimmed().split(' ').first().toDouble() / 1024.0;
        }
    }
#else
    Q_UNUSED(field)
#endif
    return -1;
}

// Resident memory of the process now in MiB, or -1 when unknown.
inline double residentMiB()
{
    return statusMiB("VmRSS:");
}

// Peak resident memory of the process in MiB, or -1 when unknown.
inline double peakResidentMiB()
{
    const double peak = statusMiB("VmHWM:");
    if (peak >= 0)
        return peak;
#ifdef Q_OS_UNIX
    rusage usage {};
    if (getrusage(RUSAGE_SELF, &usage) == 0) {
#ifdef Q_OS_MACOS
        return usage.ru_maxrss / (1024.0 * 1024.0);   // bytes
#else
        return usage.ru_maxrss / 1024.0;              // KiB
#endif
    }
#endif
    return -1;
}

// Starts a new peak for the next case where the system allows it; elsewhere
// the figure stays the peak of the whole run so far. Memory the previous
// case freed goes back to the system first, so it does not count again.
inline void resetPeakResident()
{
#ifdef Q_OS_LINUX
    malloc_trim(0);
    QFile clearRefs(QStringLiteral("/proc/self/clear_refs"));
    if (clearRefs.open(QIODevice::WriteOnly))
        clearRefs.write("5");
#endif
}

// Processor time of the whole process (all threads, user and system).
inline double processCpuSeconds()
{
#ifdef Q_OS_UNIX
    rusage usage {};
    if (getrusage(RUSAGE_SELF, &usage) == 0) {
        return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec
            + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    }
#endif
    return double(std::clock()) / CLOCKS_PER_SEC;
}

// Processor time of the calling thread in nanoseconds: what it did itself,
// whatever else the machine was busy with meanwhile.
inline qint64 threadCpuNs()
{
#ifdef Q_OS_UNIX
    timespec now {};
    if (clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now) == 0)
        return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
#endif
    return qint64(processCpuSeconds() * 1e9);
}

// Thousands of sockets need more descriptors than a shell usually allows.
inline void raiseOpenFileLimit()
{
#ifdef Q_OS_UNIX
    rlimit limit {};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
#ifdef Q_OS_MACOS
        limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, OPEN_MAX);
#else
        limit.rlim_cur = limit.rlim_max;
#endif
        setrlimit(RLIMIT_NOFILE, &limit);
    }
#endif
}

#endif
