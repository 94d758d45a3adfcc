#include "Hooks/HookConnectivity.h"

#include "Hooks/HookInstaller.h"
#include "Hooks/HookListener.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// A shell with long start files needs time.
constexpr std::chrono::seconds kShellLimit{10};
/// How long after the command's end its call may still be on its way to this thread.
constexpr std::chrono::milliseconds kArrival{400};

} // namespace

QStringList inLoginShell(const QString &shell, const QString &command)
{
    // Many people set a proxy where only an interactive shell reads it.
    static const QStringList kBoth{u"zsh"_s, u"fish"_s, u"ksh"_s, u"dash"_s, u"sh"_s};
    if (shell.isEmpty())
        return {u"/bin/sh"_s, u"-c"_s, command};
    const QString name = QFileInfo(shell).fileName();
    // Bash reads a login's start files or an interactive shell's, not both: a terminal's shell inherits what the login
    // exported, and reads its own.
    if (name == "bash"_L1)
        return {shell, u"-l"_s, u"-c"_s, uR"(exec "$0" -i -c "$1")"_s, shell, command};
    if (kBoth.contains(name))
        return {shell, u"-i"_s, u"-l"_s, u"-c"_s, command};
    return {shell, u"-c"_s, command};
}

HookConnectivity::HookConnectivity(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
    if (m_needs.listener)
        connect(m_needs.listener, &HookListener::called, this, &HookConnectivity::heard);
}

SourceState HookConnectivity::state() const
{
    if (!m_needs.listener)
        return SourceState::ready();
    if (!m_needs.listener->running()) {
        const int port = m_needs.listener->wantedPort();
        return SourceState::failed(
            m_holder ? tr("Port %1 is held by %2: Claude Code's calls go there, and not to Velto.").arg(port).arg(m_holder->name)
                     : tr("Another program holds port %1: Claude Code's calls go there, and not to Velto.").arg(port));
    }
    if (m_proof == Proof::Lost)
        return SourceState::failed(m_tried);
    if (m_silentTurns >= kSilentTurns)
        return SourceState::failed(
            tr("Sessions work, but Claude Code doesn't call Velto. Those that were open before you connected "
               "call once they are started again."));
    return SourceState::ready();
}

void HookConnectivity::listen()
{
    if (!m_needs.listener || m_needs.listener->running())
        return;
    m_needs.listener->start();
    if (m_needs.listener->running())
        m_holder.reset();
    else
        nameHolder();
    Q_EMIT changed();
}

void HookConnectivity::nameHolder()
{
    inBackground(
        m_needs.background, this,
        [&machine = m_needs.machine, port = m_needs.listener->wantedPort()] { return machine.holderOf(port); },
        [this](const std::optional<PortHolder> &holder) {
            if (m_needs.listener->running())
                return;
            const bool same = holder && m_holder && holder->pid == m_holder->pid;
            m_holder = holder;
            if (holder && !same)
                m_needs.machine.whenEnded(holder->pid, this, [this] { listen(); });
            Q_EMIT changed();
        });
}

void HookConnectivity::heard()
{
    ++m_calls;
    m_lastCall = m_needs.clock.now();
    const bool wasSilent = std::exchange(m_silentTurns, 0) >= kSilentTurns;
    if (wasSilent || m_proof == Proof::Lost)
        set(Proof::Arrives, {});
}

void HookConnectivity::turnEnded(Instant began)
{
    if (m_lastCall && *m_lastCall >= began)
        m_silentTurns = 0;
    else if (++m_silentTurns == kSilentTurns)
        prove();
}

void HookConnectivity::tryAgain()
{
    listen();
    prove();
}

void HookConnectivity::forget()
{
    m_silentTurns = 0;
    set(Proof::None, {});
}

void HookConnectivity::prove()
{
    if (m_proving || !m_needs.listener || !m_needs.listener->running())
        return;
    m_proving = true;
    Q_EMIT changed();
    const bool pastProxy = m_needs.installer.goesPastProxy();
    send(pastProxy, [this, pastProxy](bool arrived) {
        if (arrived)
            return set(Proof::Arrives, {});
        if (pastProxy)
            return set(Proof::Lost,
                       tr("Velto ran the command of its hooks in your shell, past the proxy, and it didn't arrive."));
        send(true, [this](bool arrivedPast) {
            if (!arrivedPast)
                return set(Proof::Lost,
                           m_needs.tools.toolInstalled(u"curl"_s)
                               ? tr("Velto ran the command of its hooks in your shell, as it is and past a proxy, and it didn't "
                                    "arrive.")
                               : tr("The hooks need curl, and it isn't installed."));
            m_needs.installer.setGoesPastProxy(true);
            set(Proof::Arrives, {});
            Q_EMIT formChanged();
        });
    });
}

void HookConnectivity::send(bool pastProxy, const std::function<void(bool)> &then)
{
    const int before = m_calls;
    const QStringList line = inLoginShell(qEnvironmentVariable("SHELL"), m_needs.installer.eventCommand(pastProxy));
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools, line] { return tools.run(line, {}, kShellLimit); },
        [this, before, then](const RunResult &) {
            if (m_calls > before)
                return then(true);
            m_arrival = m_needs.clock.after(kArrival, [this, before, then] { then(m_calls > before); });
        });
}

void HookConnectivity::set(Proof proof, const QString &tried)
{
    m_proving = false;
    m_proof = proof;
    m_tried = tried;
    Q_EMIT changed();
}

} // namespace velto
