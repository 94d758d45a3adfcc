#pragma once

#include "Core/SourceState.h"
#include "Platform/Machine.h"
#include "Platform/Timer.h"

#include <QObject>
#include <functional>
#include <optional>

namespace velto {

class Background;
class Clock;
class HookInstaller;
class HookListener;
class ToolRunner;

/// Whether the calls of Claude Code's hooks reach Velto: whether it listens, who does if it doesn't, and whether they arrive.
/// UI thread; never blocks it.
class HookConnectivity : public QObject {
    Q_OBJECT
public:
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        const Machine &machine;
        HookInstaller &installer;
        HookListener *listener; ///< may be null: then nothing is heard, and that isn't a failure
    };
    /// This many turns in a row without a call are no accident. One alone may be: a turn that the user interrupts makes none.
    static constexpr int kSilentTurns = 3;

    explicit HookConnectivity(Needs needs, QObject *parent = nullptr);

    /// `failed` with a sentence for the user while calls don't arrive, as far as is known.
    SourceState state() const;

    /// Listens; if the port is taken, finds out by whom, and tries again when that program ends.
    void listen();
    /// Runs the event command once, with an empty body, in the user's login shell, as it is or as it would be in Claude
    /// Code's settings, and sees whether it arrives. If only a command that bypasses the proxy does, the installer is told.
    void prove();
    /// Tries again whatever failed.
    void tryAgain();
    /// A turn of a session that began at that time is over.
    void turnEnded(Instant began);
    /// The hooks were removed, so no calls are expected.
    void forget();

Q_SIGNALS:
    void changed();
    /// Whether the commands must bypass the proxy has changed.
    void formChanged();

private:
    enum class Proof : quint8 { None, Arrives, Lost };

    void heard();
    void nameHolder();
    void send(bool pastProxy, const std::function<void(bool arrived)> &then);
    void set(Proof proof, const QString &tried);

    Needs m_needs;
    std::optional<PortHolder> m_holder;
    Proof m_proof = Proof::None;
    QString m_tried; ///< what was tried in vain
    bool m_proving = false;
    int m_calls = 0;
    std::optional<Instant> m_lastCall;
    int m_silentTurns = 0;
    TimerHandle m_arrival;
};

/// The command line that runs `command` as the user's terminal would, with their shell's start files read. `shell` is the
/// path of the login shell.
QStringList inLoginShell(const QString &shell, const QString &command);

} // namespace velto
