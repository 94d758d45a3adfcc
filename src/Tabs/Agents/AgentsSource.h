#pragma once

#include "Core/HookEvent.h"
#include "Core/SourceState.h"
#include "Core/VeltoSource.h"
#include "Tabs/Agents/Agent.h"
#include "Tabs/Agents/ToolProcess.h"

#include <QHash>
#include <memory>

namespace velto {

class Applications;
class Background;
class Clock;
class Files;
class HookInstaller;
class HookListener;
class Prefs;
class TerminalApp;
class ToolRunner;
class Workspace;
struct Places;

/// Claude Code's sessions and other AI tools: what works, what waits for the user, what is stale, by polling and by the hook
/// calls of Claude Code. Raises Peeks when a session needs the user or is done. Lives on the UI thread, never blocks it.
/// Of several refreshes under way at once the last one to finish wins.
class AgentsSource : public VeltoSource {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState state READ state NOTIFY changed FINAL)
    Q_PROPERTY(int runningCount READ runningCount NOTIFY changed FINAL)
    Q_PROPERTY(int waitingCount READ waitingCount NOTIFY changed FINAL)
public:
    /// What the source leans on; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Files &files;
        Applications &applications;
        Prefs &prefs;
        const Places &places;
        HookInstaller &installer;
        std::unique_ptr<HookListener> listener;
    };
    explicit AgentsSource(Needs needs, QObject *parent = nullptr);
    ~AgentsSource() override;

    QString title() const override;
    QString symbol() const override;
    int badge() const override { return runningCount(); }
    QUrl makeView() const override;

    const QList<Agent> &agents() const { return m_agents; }
    SourceState state() const { return m_state; }
    const QList<ToolProcess> &tools() const { return m_tools; }
    bool scanning() const { return m_scanning; }
    std::optional<QDateTime> lastScan() const { return m_lastScan; }
    bool hooksInstalled() const { return m_hooksInstalled; }
    std::optional<QString> hookError() const { return m_hookError; }

    QList<Agent> running() const;
    QList<Agent> waiting() const;
    QList<Agent> stale() const;
    int runningCount() const;
    int waitingCount() const;

    OnPeek onPeek;

    void refresh();
    void scan();
    void hook(const HookEvent &event);
    void permission(const HookEvent &event, Peek::Decide decide);
    void installHooks();
    void removeHooks();
    void dismiss(const QString &id);
    void clearWaiting();

private:
    void apply(const std::optional<QList<Agent>> &listing);
    void diff(const QList<Agent> &listing);
    void donePeek(const QString &session, const QString &text, const std::optional<QString> &resume,
                  const std::optional<QString> &cwd);
    bool terminalInFront() const;
    QString nameFor(const HookEvent &event) const;

    Needs m_needs;
    QList<Agent> m_agents;
    SourceState m_state = SourceState::loading();
    QList<ToolProcess> m_tools;
    bool m_scanning = false;
    std::optional<QDateTime> m_lastScan;
    bool m_hooksInstalled = false;
    std::optional<QString> m_hookError;
    std::optional<QHash<QString, Agent>> m_previous;
    QHash<QString, QDateTime> m_lastDonePeek;
};

} // namespace velto
