#include "Platform/Linux/PortHolders.h"

#include <QDir>
#include <QFile>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr QByteArrayView kListening = "0A";
/// As /proc writes them: 127.0.0.1, and the wildcard addresses.
constexpr QByteArrayView kAddresses[] = {"0100007F", "00000000", "0000000000000000FFFF00000100007F",
                                         "00000000000000000000000000000000"};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// "socket:[INODE]" of every listener that a connection to 127.0.0.1:`port` may reach.
QStringList listeningSockets(quint16 port)
{
    const QByteArray wanted = ':' + QByteArray::number(port, 16).toUpper().rightJustified(4, '0');
    QStringList sockets;
    for (const auto &table : {u"/proc/net/tcp"_s, u"/proc/net/tcp6"_s}) {
        const auto lines = contentOf(table).split('\n');
        for (const QByteArray &line : lines) {
            const auto fields = line.simplified().split(' ');
            if (fields.size() < 10 || fields[3] != kListening || !fields[1].endsWith(wanted))
                continue;
            const QByteArray address = fields[1].chopped(wanted.size());
            if (std::ranges::find(kAddresses, QByteArrayView(address)) != std::end(kAddresses))
                sockets.append(u"socket:[%1]"_s.arg(QLatin1String(fields[9])));
        }
    }
    return sockets;
}

bool holdsOneOf(const QString &process, const QStringList &sockets)
{
    const QDir descriptors(process + "/fd"_L1);
    const auto names = descriptors.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    return std::ranges::any_of(names, [&](const QString &name) {
        QByteArray target(64, Qt::Uninitialized);
        const auto length =
            readlink(QFile::encodeName(descriptors.filePath(name)).constData(), target.data(), std::size_t(target.size()));
        return length > 0 && sockets.contains(QString::fromUtf8(target.left(length)));
    });
}

} // namespace

bool portTaken(quint16 port)
{
    return !listeningSockets(port).isEmpty();
}

std::optional<PortHolder> portHolder(quint16 port)
{
    const QStringList sockets = listeningSockets(port);
    if (sockets.isEmpty())
        return std::nullopt;
    const auto processes = QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &process : processes) {
        bool isProcess = false;
        const qint64 pid = process.toLongLong(&isProcess);
        const QString folder = "/proc/"_L1 + process;
        if (isProcess && pid != getpid() && holdsOneOf(folder, sockets))
            return PortHolder{pid, QString::fromUtf8(contentOf(folder + "/comm"_L1)).trimmed()};
    }
    return std::nullopt; // another user's
}

} // namespace velto
