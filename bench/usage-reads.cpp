// Reads logs on command: "first" with a new reader, "again" with the current one, each on a line of standard input. Answers
// each with: microseconds of processor time, the peak of KB above the idle size, and the five sums. Usage: usage-reads FOLDER

#include "Feeds/Usage/UsageReader.h"
#include "Platform/Posix/PosixFileTree.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace {

long kilobytes(const std::string &name)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with(name + ':'))
            return std::stol(line.substr(name.size() + 1));
    }
    return 0;
}

double processorMicroseconds()
{
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return double(spent.tv_sec) * 1e6 + double(spent.tv_nsec) / 1e3;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const velto::PosixFileTree tree;
    auto reader = std::make_unique<velto::UsageReader>(tree, folder);
    std::string command;
    while (std::getline(std::cin, command)) {
        if (command == "first")
            reader = std::make_unique<velto::UsageReader>(tree, folder);
        const QDateTime now = QDateTime::currentDateTime();
        const long rest = kilobytes("VmRSS");
        std::ofstream("/proc/self/clear_refs") << "5"; // resets the peak
        const double begin = processorMicroseconds();
        const velto::TokenUsage usage = reader->read(now);
        const double spent = processorMicroseconds() - begin;
        std::printf("%.1f %ld %lld %lld %lld %lld %lld\n", spent, kilobytes("VmHWM") - rest, static_cast<long long>(usage.input),
                    static_cast<long long>(usage.output), static_cast<long long>(usage.cacheRead),
                    static_cast<long long>(usage.cacheWrite), static_cast<long long>(usage.turns));
        std::fflush(stdout);
    }
    return 0;
}
