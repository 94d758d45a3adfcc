#pragma once

#include "Core/SourceState.h"
#include "Hooks/HookConnectivity.h"
#include "Hooks/HookInstaller.h"

#include <QObject>
#include <optional>

namespace velto {

/// The link to Claude Code as the user has it: whether its hooks are in Claude Code's settings, and whether their calls arrive.
/// Puts them in and takes them out again. UI thread.
class HookLink : public QObject {
    Q_OBJECT
public:
    explicit HookLink(const HookConnectivity::Needs &needs, QObject *parent = nullptr);

    /// The hooks of this version, with the current secret, are in Claude Code's settings.
    bool installed() const { return m_standing == HookInstaller::Standing::Current; }
    /// Hooks of an older Velto, or with another secret, are.
    bool needsUpgrade() const { return m_standing == HookInstaller::Standing::Outdated; }
    /// Why the last install() or remove() failed, as a sentence.
    const std::optional<QString> &error() const { return m_error; }
    /// Whether calls arrive: `failed` with a sentence while they don't.
    SourceState hearing() const { return m_connectivity.state(); }
    bool goesPastProxy() const;
    /// What install() adds, as text to agree to.
    QString preview() const;

    void install();
    void remove();
    /// The hooks' current state in the file, which others write too; HookInstaller::reader() finds it on any thread.
    void found(HookInstaller::Standing standing);
    /// Counts installations and removals made here: what was read before one is outdated.
    int edits() const { return m_edits; }
    /// Starts to listen, or tries again if the port was taken.
    void listen() { m_connectivity.listen(); }
    /// Finds out which form of the commands gets through, before the user agrees to them.
    void prepare() { m_connectivity.prove(); }
    /// Listens, and tests whether calls arrive, once more.
    void tryAgain() { m_connectivity.tryAgain(); }
    /// A session has ended a turn that began then: its hooks call, if they are installed and get through.
    void turnEnded(Instant since);

Q_SIGNALS:
    /// Any of the above may be different.
    void changed();

private:
    void stand(HookInstaller::Standing standing);

    HookInstaller &m_installer;
    HookConnectivity m_connectivity;
    HookInstaller::Standing m_standing = HookInstaller::Standing::Absent;
    int m_edits = 0;
    std::optional<QString> m_error;
};

} // namespace velto
