#pragma once

#include <QByteArray>
#include <QFile>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

// What the benchmark process itself has used so far, for the window-level harnesses.
namespace quill::bench {

/// User plus system CPU time of this process, in seconds.
inline double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_utime.tv_usec / 1e6 + usage.ru_stime.tv_sec +
           usage.ru_stime.tv_usec / 1e6;
}

/// Resident memory of this process in MB, or -1 where /proc is not there.
inline double residentMb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return -1;
}

/// CPU time of each thread of this process by name, in seconds, from the scheduler's own
/// nanosecond count rather than the sampled ticks (Linux; empty elsewhere).
inline std::map<std::string, double> threadCpuSeconds() {
    std::map<std::string, double> out;
    std::error_code ec;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task", ec)) {
        std::string name;
        std::getline(std::ifstream(task.path() / "comm"), name);
        double ns = 0;
        std::ifstream(task.path() / "schedstat") >> ns;
        out[name] += ns / 1e9;
    }
    return out;
}

} // namespace quill::bench
