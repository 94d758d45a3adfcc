#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace velto {

class AgentsSource;
class Background;
class Defaults;
class Hub;
class ToolRunner;
struct Places;

/// A stand-in for a session. It asks a question with the very command of Claude Code's hooks, so that a user can try all of it
/// without Claude Code, and reports the answer. UI thread only.
class StandIn : public QObject {
    Q_OBJECT
public:
    /// All of it outlives this.
    struct Needs {
        Hub &hub;
        AgentsSource &agents;
        Background &background;
        ToolRunner &tools;
        Defaults &defaults;
        const Places &places;
    };
    explicit StandIn(const Needs &needs, QObject *parent = nullptr);

    /// Asks; does nothing while a question of its own is open.
    void ask();

Q_SIGNALS:
    /// What came back, letter for letter: empty if nobody answered.
    void told(const QByteArray &answer);

private:
    void hear(const QByteArray &answer);

    Needs m_needs;
    bool m_asking = false;
};

} // namespace velto
