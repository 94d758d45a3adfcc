#include "Feeds/Usage/UsageReader.h"

#include "Feeds/Usage/UsageFile.h"
#include "Platform/FileTree.h"

#include <QFile>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

void add(TokenUsage &usage, const UsageLine &line, qint64 startOfDay)
{
    constexpr qint64 kHour = 3600 * 1000;
    qint64 &hour = usage.hours.at(size_t(std::clamp<qint64>((line.at - startOfDay) / kHour, 0, 23)));
    hour = sumOf(hour, sumOf(line.input, sumOf(line.output, line.cacheWrite)));
    usage.input = sumOf(usage.input, line.input);
    usage.output = sumOf(usage.output, line.output);
    usage.cacheRead = sumOf(usage.cacheRead, line.cacheRead);
    usage.cacheWrite = sumOf(usage.cacheWrite, line.cacheWrite);
    ++usage.turns;
    if (!usage.first || line.at < usage.first->toMSecsSinceEpoch())
        usage.first = QDateTime::fromMSecsSinceEpoch(line.at, Qt::UTC);
}

} // namespace

QString claudeLogs(const QString &home)
{
    return home + "/.claude/projects"_L1;
}

UsageReader::UsageReader(const FileTree &tree, QString logs)
    : m_tree(tree)
    , m_logs(std::move(logs))
{
}

TokenUsage UsageReader::read(const QDateTime &now)
{
    const std::lock_guard lock(m_lock);
    const QDate day = now.toLocalTime().date();
    const qint64 startOfDay = day.startOfDay().toMSecsSinceEpoch();
    if (day != m_day) {
        m_day = day;
        m_offsets.clear();
        m_usage = {};
    }
    UsageFile file(m_stopped);
    // A file written to today holds lines of earlier days too.
    const UsageFile::Found count = [this, startOfDay](const UsageLine &line) {
        if (line.at >= startOfDay)
            add(m_usage, line, startOfDay);
    };
    m_tree.each(m_logs, ".jsonl", [&](const TreeFile &log) {
        if (log.modified < startOfDay)
            return;
        const auto known = m_offsets.find(log.path);
        const quint64 offset = known == m_offsets.end() ? 0 : known->second;
        // A file that has shrunk is ignored for the rest of the day: its new lines can't be told from those already counted.
        if (offset >= log.size)
            return;
        const quint64 consumed = file.read(QFile::decodeName(log.path.c_str()), offset, log.size, count);
        if (consumed != offset)
            m_offsets.insert_or_assign(log.path, consumed);
    });
    return m_usage;
}

} // namespace velto
