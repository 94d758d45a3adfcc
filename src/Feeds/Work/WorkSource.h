#pragma once

#include "Core/KeychainLane.h"
#include "Core/SourceState.h"
#include "Feeds/Work/WorkReaders.h"
#include "Platform/Timer.h"

#include <QHash>
#include <QObject>

namespace velto {

class Background;
class Clock;
class Keychain;
class Prefs;
class ToolRunner;

/// The pull requests that wait for the user's review, by what `gh` printed (https://cli.github.com/manual/gh_search_prs), and
/// why there are none to be had.
struct PullRequests {
    QList<WorkItem> items;
    std::optional<QString> error;
};
/// Blocks for up to 30 seconds; never on the UI thread.
PullRequests loadPRs(ToolRunner &tools);

/// What other people want from the user at work: reviews on GitHub, issues in Linear and Jira, mentions in Slack. Asks at most
/// once in five minutes. Lives on the UI thread, never blocks it. `gh` runs once at a time: what is asked for meanwhile follows.
/// Of several readings of the work tools under way the last one to finish wins.
class WorkSource : public QObject {
    Q_OBJECT
public:
    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Http &http;
        Keychain &keychain;
        Prefs &prefs;
        WorkEndpoints endpoints = {};
    };
    explicit WorkSource(Needs needs, QObject *parent = nullptr);
    ~WorkSource() override;

    const QList<WorkItem> &prs() const { return m_now.prs; }
    SourceState prState() const { return m_now.prState; }
    /// Linear's first, then Jira's.
    const QList<WorkItem> &issues() const { return m_now.issues; }
    const QList<WorkItem> &mentions() const { return m_now.mentions; }
    SourceState workState() const { return m_now.workState; }

    /// Asks what is due; with `force` everything that is wanted. Returns at once.
    void refresh(bool force);
    /// Opens the keyring's own dialog; what it held is read then.
    void unlock();

Q_SIGNALS:
    void changed();

private:
    enum class Group : quint8 { Prs, Work };
    struct Published {
        QList<WorkItem> prs;
        SourceState prState = SourceState::loading();
        QList<WorkItem> issues;
        QList<WorkItem> mentions;
        SourceState workState = SourceState::loading();
        bool operator==(const Published &) const = default;
    };
    struct Found {
        QList<WorkItem> issues;
        QList<WorkItem> mentions;
        QStringList errors;
    };

    bool due(Group group, bool force);
    void readPullRequests();
    void keyringChanged();
    QCoro::Task<> readWork();
    void publish(Published next);

    Needs m_needs;
    KeychainLane m_keychain;
    Published m_now;
    bool m_askingGitHub = false;
    bool m_askGitHubAgain = false;
    QHash<Group, Instant> m_last; ///< when each was last asked for
    std::shared_ptr<const bool> m_life = std::make_shared<bool>(true); ///< ends with this object
};

} // namespace velto
