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

/// A session that isn't one. It asks a question by the very command that Claude Code's hooks hold, so that a user can try the
/// whole road without Claude Code, and says what it was told. UI thread only.
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
