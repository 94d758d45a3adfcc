#pragma once

#include "Core/SourceState.h"
#include "Platform/Clock.h"
#include "Tabs/Home/McpHealth.h"
#include "Tabs/Home/RepoStates.h"
#include "Tabs/Home/TokenUsage.h"

#include <QHash>
#include <QObject>
#include <functional>

namespace velto {

class Background;
class Prefs;
class ToolRunner;
struct Places;

/// The three slow signals, each read at its own pace: today's token use, the health of MCP servers, the state of the user's
/// repositories. Has no tab and raises no Peek. Lives on the UI thread, never blocks it; a reading that ends late wins.
class SignalsSource : public QObject {
    Q_OBJECT
public:
    /// What the source leans on; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Prefs &prefs;
        const Places &places;
        /// The sums of the day that a moment belongs to. Called in the background, perhaps after the source is gone.
        std::function<TokenUsage(const QDateTime &)> readUsage;
    };
    explicit SignalsSource(Needs needs, QObject *parent = nullptr);

    const TokenUsage &tokens() const { return m_now.tokens; }
    SourceState usageState() const { return m_now.usageState; }
    const QList<MCPServer> &mcp() const { return m_now.mcp; }
    SourceState mcpState() const { return m_now.mcpState; }
    const QList<RepoState> &repos() const { return m_now.repos; }
    SourceState reposState() const { return m_now.reposState; }

    QList<MCPServer> mcpFailing() const;
    QList<MCPServer> mcpNeedsAuth() const;
    QList<RepoState> reposNeedingWork() const;

    /// Reads what is due; with `force` everything that is wanted.
    void refresh(bool force);
    /// Asks about the MCP servers now.
    void checkMcp();

Q_SIGNALS:
    void changed();

private:
    enum class Signal : quint8 { Usage, Repos, Mcp };
    struct Published {
        TokenUsage tokens;
        SourceState usageState = SourceState::loading();
        QList<MCPServer> mcp;
        SourceState mcpState = SourceState::loading();
        QList<RepoState> repos;
        SourceState reposState = SourceState::loading();
        bool operator==(const Published &) const = default;
    };

    bool due(Signal signal, bool force, std::chrono::seconds interval);
    void readTokens();
    void readRepos();
    void readMcp();
    void publish(Published next);

    Needs m_needs;
    Published m_now;
    QHash<Signal, Clock::Instant> m_last; ///< when each was last started
};

} // namespace velto
