#include "Platform/Linux/LinuxMachine.h"

#include "Platform/Files.h"
#include "Platform/Linux/PortHolders.h"
#include "Platform/Linux/Processes.h"

#include <QStringList>
#include <QSysInfo>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargest = 65'536;

/// Strips the shell's quotation marks and backslashes from a value.
QString unquoted(const QString &value)
{
    QString result;
    QChar quote;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c == u'\\' && quote != u'\'' && i + 1 < value.size())
            result += value.at(++i);
        else if (c == quote)
            quote = {};
        else if (quote.isNull() && (c == u'"' || c == u'\''))
            quote = c;
        else
            result += c;
    }
    return result;
}

} // namespace

LinuxMachine::LinuxMachine(const Files &files)
    : m_files(files)
{
}

QString LinuxMachine::displayName() const
{
    const auto file = m_files.read(u"/etc/machine-info"_s, kLargest);
    const auto *const bytes = std::get_if<QByteArray>(&file);
    const QString pretty = bytes ? prettyHostName(*bytes) : QString();
    return pretty.isEmpty() ? QSysInfo::machineHostName() : pretty;
}

std::optional<PortHolder> LinuxMachine::holderOf(quint16 port) const
{
    return portHolder(port);
}

void LinuxMachine::giveBackMemory() const
{
#ifdef __GLIBC__ // others keep less, and have no such call
    ::malloc_trim(0);
#endif
}

void useOneHeap()
{
#ifdef __GLIBC__
    ::mallopt(M_ARENA_MAX, 1);
#endif
}

bool LinuxMachine::lives(qint64 pid) const
{
    return processLives(pid);
}

void LinuxMachine::whenEnded(qint64 pid, QObject *context, std::function<void()> ended) const
{
    whenProcessEnds(pid, context, std::move(ended));
}

QString prettyHostName(const QByteArray &machineInfo)
{
    constexpr auto kKey = "PRETTY_HOSTNAME="_L1;
    QString result;
    const QStringList lines = QString::fromUtf8(machineInfo).split(u'\n');
    for (const QString &line : lines) {
        if (line.trimmed().startsWith(kKey))
            result = unquoted(line.trimmed().mid(kKey.size()));
    }
    return result;
}

} // namespace velto
