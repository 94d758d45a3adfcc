#pragma once

#include "Platform/Machine.h"

#include <QByteArray>

namespace velto {

class Files;

/// The pretty host name that the user chose (/etc/machine-info), else the host name.
class LinuxMachine final : public Machine {
public:
    explicit LinuxMachine(const Files &files);

    QString displayName() const override;
    std::optional<PortHolder> holderOf(quint16 port) const override;
    void giveBackMemory() const override;
    bool lives(qint64 pid) const override;
    void whenEnded(qint64 pid, QObject *context, std::function<void()> ended) const override;

private:
    const Files &m_files;
};

/// From now on all threads take memory from one heap. Otherwise each gets a heap of its own, and what it leaves free at the end
/// of that is neither given back nor of use to others. Must be called before the first thread starts.
void useOneHeap();

/// The PRETTY_HOSTNAME of such a file; empty if it has none. See machine-info(5).
QString prettyHostName(const QByteArray &machineInfo);

} // namespace velto
