#pragma once

#include "Core/Prefs.h"
#include "Core/RowModel.h"
#include "Core/SourceState.h"
#include "Feeds/Repositories/RepoState.h"
#include "Feeds/Servers/McpHealth.h"
#include "Feeds/Usage/TokenUsage.h"
#include "Platform/Timer.h"

#include <QObject>
#include <QSet>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace velto {

class Background;
class Clock;
class ToolRunner;

/// The three slow signals, each kept fresh at its own pace: today's token use, the health of Claude Code's MCP servers, and the
/// repositories with unsaved work. Raises no Peeks. Lives on the UI thread, never blocks it.
/// Each signal has at most one reading under way. Another one requested meanwhile follows right after it if it was forced, and
/// otherwise waits for its next turn. A walk that is stuck in a folder of a hanging disk is abandoned, and later ones skip
/// that folder until it answers.
class SignalsSource : public QObject {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState usageState READ usageState NOTIFY changed FINAL)
    /// Tokens of today that count against the daily budget: all but those re-read from the cache.
    Q_PROPERTY(qint64 tokensUsed READ tokensUsed NOTIFY changed FINAL)
    Q_PROPERTY(qint64 tokensWritten READ tokensWritten NOTIFY changed FINAL)
    Q_PROPERTY(qint64 tokensReread READ tokensReread NOTIFY changed FINAL)
    Q_PROPERTY(qint64 turns READ turns NOTIFY changed FINAL)
    Q_PROPERTY(velto::SourceState mcpState READ mcpState NOTIFY changed FINAL)
    Q_PROPERTY(QAbstractItemModel *mcp READ mcpRows CONSTANT FINAL)
    Q_PROPERTY(int mcpCount READ mcpCount NOTIFY changed FINAL)
    Q_PROPERTY(int mcpFailingCount READ mcpFailingCount NOTIFY changed FINAL)
    Q_PROPERTY(int mcpNeedsAuthCount READ mcpNeedsAuthCount NOTIFY changed FINAL)
    /// The user asked for another check, and it isn't done yet.
    Q_PROPERTY(bool mcpRetrying READ mcpRetrying NOTIFY changed FINAL)
    Q_PROPERTY(velto::SourceState reposState READ reposState NOTIFY changed FINAL)
    Q_PROPERTY(int reposNeedingWorkCount READ reposNeedingWorkCount NOTIFY changed FINAL)
public:
    /// Sums up the tokens of the day that `now` belongs to. Called in the background, one call at a time.
    using ReadUsage = std::function<TokenUsage(const QDateTime &now)>;

    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Prefs &prefs;
        QString claudeLogs; ///< the folder of Claude Code's logs
        ReadUsage readUsage; ///< only asked while that folder exists
    };
    explicit SignalsSource(Needs needs, QObject *parent = nullptr);
    ~SignalsSource() override;

    const TokenUsage &tokens() const { return m_tokens; }
    SourceState usageState() const { return m_usageState; }
    const QList<MCPServer> &mcp() const { return m_mcp; }
    SourceState mcpState() const { return m_mcpState; }
    const QList<RepoState> &repos() const { return m_repos; }
    SourceState reposState() const { return m_reposState; }

    QList<MCPServer> mcpFailing() const;
    QList<MCPServer> mcpNeedsAuth() const;
    QList<RepoState> reposNeedingWork() const;

    qint64 tokensUsed() const;
    qint64 tokensWritten() const { return m_tokens.output; }
    qint64 tokensReread() const { return m_tokens.cacheRead; }
    qint64 turns() const { return m_tokens.turns; }
    /// serverName, status, detail.
    QAbstractItemModel *mcpRows() { return &m_mcpRows; }
    int mcpCount() const { return int(m_mcp.size()); }
    int mcpFailingCount() const { return int(mcpFailing().size()); }
    int mcpNeedsAuthCount() const { return int(mcpNeedsAuth().size()); }
    bool mcpRetrying() const { return m_mcpRetrying; }
    int reposNeedingWorkCount() const { return int(reposNeedingWork().size()); }

    /// Reads what is due, of the modules that are on; all of them if forced. Returns at once.
    void refresh(bool force);
    /// Checks the MCP servers now, as the user asked.
    Q_INVOKABLE void retryMcp();

Q_SIGNALS:
    void changed();

private:
    struct Signal {
        Prefs::Module module;
        std::chrono::seconds interval;
        void (SignalsSource::*start)();
        std::optional<QDateTime> last; ///< when it was last due, also if nothing could be read then
        bool underWay = false;
        bool again = false;
    };
    struct RepoReading;
    struct RepoWalk;

    bool mayBeRead(const Signal &signal);
    bool due(Signal &signal, bool force) const;
    void begin(Signal &signal, bool force);
    template <typename Work, typename Apply> void read(Signal &signal, Work work, Apply apply);
    void readUsage();
    void readRepos();
    void walked(const RepoWalk &walk, const RepoReading &reading);
    void watchWalk();
    void readMcp();
    template <typename Value> void set(Value &field, const Value &value);
    void publish();

    Needs m_needs;
    Signal m_usage{Prefs::Module::Usage, std::chrono::seconds(300), &SignalsSource::readUsage, {}};
    Signal m_repoWalk{Prefs::Module::Repos, std::chrono::seconds(300), &SignalsSource::readRepos, {}};
    Signal m_mcpCheck{Prefs::Module::Mcp, std::chrono::seconds(600), &SignalsSource::readMcp, {}};
    std::shared_ptr<RepoWalk> m_walk; ///< the one under way
    QSet<QString> m_hanging; ///< folders that abandoned walks are stuck in
    TimerHandle m_walkWatch;

    TokenUsage m_tokens;
    SourceState m_usageState = SourceState::loading();
    QList<MCPServer> m_mcp;
    SourceState m_mcpState = SourceState::loading();
    QList<RepoState> m_repos;
    SourceState m_reposState = SourceState::loading();
    bool m_mcpRetrying = false;
    bool m_changed = false; ///< since changed() was last announced
    RowModel m_mcpRows;
};

} // namespace velto
