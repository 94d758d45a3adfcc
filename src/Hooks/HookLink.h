#pragma once

#include "Core/SourceState.h"
#include "Hooks/HookInstaller.h"
#include "Hooks/HookRoad.h"

#include <QObject>
#include <optional>

namespace velto {

/// The link to Claude Code as the user has it: whether its hooks are in Claude Code's settings, and whether their calls arrive.
/// Puts them in and takes them out again. UI thread.
class HookLink : public QObject {
    Q_OBJECT
public:
    explicit HookLink(const HookRoad::Needs &needs, QObject *parent = nullptr);

    /// The hooks of this version, with the current secret, are in Claude Code's settings.
    bool installed() const { return m_standing == HookInstaller::Standing::Current; }
    /// Hooks of an older Velto, or with another secret, are.
    bool needsUpgrade() const { return m_standing == HookInstaller::Standing::Outdated; }
    /// Why the last install() or remove() failed, as a sentence.
    const std::optional<QString> &error() const { return m_error; }
    /// Whether calls arrive: `failed` with a sentence while they don't.
    SourceState hearing() const { return m_road.state(); }
    bool goesPastProxy() const;
    /// What install() adds, as text to agree to.
    QString preview() const;

    void install();
    void remove();
    /// How the hooks stand in the file by now, which others write too; HookInstaller::reader() tells on any thread.
    void found(HookInstaller::Standing standing);
    /// Counts what was put in and taken out here: what was read before is no longer so.
    int edits() const { return m_edits; }
    /// Starts to listen, or tries again if the port was taken.
    void listen() { m_road.listen(); }
    /// Finds out which form of the commands gets through, before the user agrees to them.
    void prepare() { m_road.prove(); }
    /// Listens, and tests the road, once more.
    void tryAgain() { m_road.tryAgain(); }
    /// A session has ended a turn that began then: its hooks call, if they are installed and the road is open.
    void turnEnded(Instant since);

Q_SIGNALS:
    /// Any of the above may be different.
    void changed();

private:
    void stand(HookInstaller::Standing standing);

    HookInstaller &m_installer;
    HookRoad m_road;
    HookInstaller::Standing m_standing = HookInstaller::Standing::Absent;
    int m_edits = 0;
    std::optional<QString> m_error;
};

} // namespace velto
