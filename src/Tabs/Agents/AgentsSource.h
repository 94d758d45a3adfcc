#pragma once

#include "Core/Peek.h"
#include "Core/RowModel.h"
#include "Core/SourceState.h"
#include "Core/VeltoSource.h"
#include "Hooks/HookEvent.h"
#include "Hooks/HookLink.h"
#include "Hooks/HookListener.h"
#include "Tabs/Agents/Agent.h"
#include "Tabs/Agents/AgentAlerts.h"
#include "Tabs/Agents/SessionWatch.h"
#include "Tabs/Agents/ShownSessions.h"
#include "Tabs/Agents/ToolProcess.h"

#include <memory>

namespace velto {

class Applications;
class Background;
class Files;
class Machine;
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
    Q_PROPERTY(int staleCount READ staleCount NOTIFY changed FINAL)
    /// The working sessions, and the waiting ones on show: the first six while a longer list is folded.
    Q_PROPERTY(QAbstractItemModel *sessions READ sessionRows CONSTANT FINAL)
    Q_PROPERTY(bool waitingFolds READ waitingFolds NOTIFY changed FINAL)
    Q_PROPERTY(bool waitingExpanded READ waitingExpanded NOTIFY changed FINAL)
    Q_PROPERTY(int hiddenWaiting READ hiddenWaiting NOTIFY changed FINAL)
    Q_PROPERTY(QAbstractItemModel *tools READ toolRows CONSTANT FINAL)
    /// The sessions on the user's other machine: rowId, name, age, spoken; null where nobody knows of any.
    Q_PROPERTY(QAbstractItemModel *otherMac READ otherMac NOTIFY changed FINAL)
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed FINAL)
    Q_PROPERTY(bool scanned READ scanned NOTIFY changed FINAL)
    /// When the last scan ended, as the line beside the button says it; empty before the first.
    Q_PROPERTY(QString scannedText READ scannedText NOTIFY changed FINAL)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY changed FINAL)
    /// The card that offers to connect Claude Code's hooks is on show.
    Q_PROPERTY(bool offersHooks READ offersHooks NOTIFY changed FINAL)
    Q_PROPERTY(bool hooksInstalled READ hooksInstalled NOTIFY changed FINAL)
    /// An older Velto's hooks, or those of another secret, are in Claude Code's settings.
    Q_PROPERTY(bool needsUpgrade READ needsUpgrade NOTIFY changed FINAL)
    /// Whether Claude Code's calls arrive: `failed` with a sentence while they don't.
    Q_PROPERTY(velto::SourceState hearing READ hearing NOTIFY changed FINAL)
    /// What installHooks() adds, as text to agree to; it may change while the connection is tested.
    Q_PROPERTY(QString previewText READ preview NOTIFY changed FINAL)
    Q_PROPERTY(bool heard READ heard NOTIFY changed FINAL)
    Q_PROPERTY(bool goesPastProxy READ goesPastProxy NOTIFY changed FINAL)
    /// The last failure to connect or disconnect, in a sentence; empty if there was none.
    Q_PROPERTY(QString hookErrorText READ hookErrorText NOTIFY changed FINAL)
public:
    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Files &files;
        const FileTree &fileTree;
        Applications &applications;
        Workspace &workspace;
        Prefs &prefs;
        TerminalApp &terminal;
        const Places &places;
        HookInstaller &installer;
        const Machine &machine;
        std::unique_ptr<HookListener> listener; ///< may be null: then no hook is heard
    };
    explicit AgentsSource(Needs needs, QObject *parent = nullptr);
    ~AgentsSource() override;

    QString title() const override;
    QString symbol() const override;
    int badge() const override { return runningCount(); }
    QUrl makeView() const override;

    const QList<Agent> &agents() const { return m_sessions.all(); }
    SourceState state() const { return m_state; }
    const QList<ToolProcess> &tools() const { return m_tools; }
    bool scanning() const { return m_scanning; }

    QList<Agent> running() const { return m_sessions.members(ShownSessions::Group::Running); }
    QList<Agent> waiting() const { return m_sessions.members(ShownSessions::Group::Waiting); }
    int runningCount() const { return m_sessions.count(ShownSessions::Group::Running); }
    int waitingCount() const { return m_sessions.count(ShownSessions::Group::Waiting); }
    int staleCount() const { return m_sessions.count(ShownSessions::Group::Stale); }

    QAbstractItemModel *sessionRows() { return m_sessions.rows(); }
    QAbstractItemModel *otherMac() const { return m_otherMac; }
    QAbstractItemModel *toolRows() { return &m_toolRows; }
    bool waitingFolds() const { return m_sessions.folds(); }
    bool waitingExpanded() const { return m_sessions.expanded(); }
    int hiddenWaiting() const { return m_sessions.hidden(); }
    bool scanned() const { return m_lastScan.has_value(); }
    QString scannedText() const;
    /// All is well, and there is nothing to show.
    bool isEmpty() const { return m_state == SourceState::ready() && agents().isEmpty() && m_tools.isEmpty(); }

    bool offersHooks() const;
    bool hooksInstalled() const { return m_hooks.installed(); }
    bool needsUpgrade() const { return m_hooks.needsUpgrade(); }
    QString hookErrorText() const { return m_hooks.error().value_or(QString()); }
    SourceState hearing() const;
    bool heard() const { return hearing() == SourceState::ready(); }
    bool goesPastProxy() const { return m_hooks.goesPastProxy(); }
    QString preview() const { return m_hooks.preview(); }

    Q_INVOKABLE void refresh();
    /// One pass over other AI tools and the listing. Does nothing while one is under way.
    Q_INVOKABLE void scan();
    /// What a memory hub reports about the user's other machine. Outlives the source.
    void setOtherMac(QAbstractItemModel *rows) { m_otherMac = rows; }
    // What the listener hears; see AgentAlerts.
    void hook(const HookEvent &event);
    void permission(const HookEvent &event, HookListener::QuestionId asker, const HookListener::Reply &reply)
    {
        m_alerts.permission(event, asker, reply);
    }
    void withdrawn(HookListener::QuestionId asker) { m_alerts.withdrawn(asker); }
    void expectTrial() { m_alerts.expectTrial(); }

    Q_INVOKABLE void installHooks() { m_hooks.install(); }
    Q_INVOKABLE void removeHooks() { m_hooks.remove(); }
    /// The user is about to agree to the hooks: finds out which form of the commands gets through.
    Q_INVOKABLE void prepareHooks() { m_hooks.prepare(); }
    /// Listens, and tests the connection, once more.
    Q_INVOKABLE void tryHearing() { m_hooks.tryAgain(); }
    Q_INVOKABLE void dismiss(const QString &id);
    Q_INVOKABLE void clearWaiting();
    Q_INVOKABLE void toggleWaiting();
    /// Reopens the session in the user's terminal.
    Q_INVOKABLE void resume(const QString &id) const;
    /// The name of that terminal.
    Q_INVOKABLE QString terminalName() const;
    /// Shows the session's folder in the file manager.
    Q_INVOKABLE void openFolder(const QString &id) const;

Q_SIGNALS:
    /// See AgentAlerts.
    void peekWithdrawn(const QUuid &id);
    void peeksRetracted(velto::Peek::News news, const QSet<QString> &sessions);

private:
    /// What views see, apart from the ages in the rows; compared to tell whether anything has changed.
    struct Published {
        ShownSessions::Published sessions;
        SourceState state;
        QList<ToolProcess> tools;
        bool scanning = false;
        QString scannedText;
        bool offersHooks = false;
        bool hooksInstalled = false;
        bool needsUpgrade = false;
        SourceState hearing;
        bool pastProxy = false;
        std::optional<QString> hookError;

        bool operator==(const Published &) const = default;
    };
    enum class Announce : quint8 { IfChanged, Always };

    void listen();
    void startListing();
    void apply(const std::optional<QList<Agent>> &listing, Instant begun);
    void setAgents(const QList<Agent> &agents);
    void publish(Announce announce = Announce::IfChanged);

    Needs m_needs;
    ShownSessions m_sessions;
    SourceState m_state = SourceState::loading();
    QList<ToolProcess> m_tools;
    bool m_scanning = false;
    std::optional<QDateTime> m_lastScan;
    int m_listingsUnderWay = 0;
    bool m_listingWanted = false;
    TimerHandle m_giveBack;
    HookLink m_hooks;
    AgentAlerts m_alerts;
    SessionWatch m_watch;
    Published m_published;
    RowModel m_toolRows;
    QAbstractItemModel *m_otherMac = nullptr;
};

} // namespace velto
