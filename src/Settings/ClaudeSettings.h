#pragma once

#include <QObject>
#include <QString>

namespace velto {

class AgentsSource;
class ToolRunner;
struct Places;

/// How Velto and Claude Code are connected. UI thread only.
class ClaudeSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString installedText READ installedText NOTIFY changed FINAL)
    Q_PROPERTY(QString stateText READ stateText NOTIFY changed FINAL)
    Q_PROPERTY(bool connected READ connected NOTIFY changed FINAL)
    Q_PROPERTY(bool canConnect READ canConnect NOTIFY changed FINAL)
    /// Claude Code's calls arrive, as far as is known.
    Q_PROPERTY(bool heard READ heard NOTIFY changed FINAL)
    /// What connecting adds to Claude Code's settings.
    Q_PROPERTY(QString previewText READ preview NOTIFY changed FINAL)
    Q_PROPERTY(QString noteText READ noteText CONSTANT FINAL)
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)
public:
    /// All of it outlives this. `port` is the hook listener's.
    ClaudeSettings(AgentsSource &agents, const ToolRunner &tools, const Places &places, int port, QObject *parent = nullptr);

    QString installedText() const;
    QString stateText() const;
    bool connected() const;
    /// Claude Code's own folder is there.
    bool canConnect() const;
    QString noteText() const;
    /// Why the last attempt failed, or why nothing is heard; empty if all is well.
    QString errorText() const;

    bool heard() const;
    QString preview() const;
    /// The user is about to agree to the hooks.
    Q_INVOKABLE void prepare();
    /// Listens, and tests the connection, once more.
    Q_INVOKABLE void tryAgain();
    Q_INVOKABLE void connectHooks();
    Q_INVOKABLE void disconnectHooks();
    /// Looks at the disk again; called when the pane is shown and when the user returns to it.
    Q_INVOKABLE void reread() { Q_EMIT changed(); }

Q_SIGNALS:
    void changed();

private:
    AgentsSource &m_agents;
    const ToolRunner &m_tools;
    const Places &m_places;
    int m_port;
};

} // namespace velto
