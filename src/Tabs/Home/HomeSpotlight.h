#pragma once

#include "Tabs/Agents/Agent.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <optional>

namespace velto {

class TerminalApp;

/// The one session that the brief puts on top. UI thread only.
class HomeSpotlight : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool present READ present NOTIFY changed FINAL)
    Q_PROPERTY(bool working READ working NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString stateText READ stateText NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    Q_PROPERTY(QString age READ age NOTIFY changed FINAL)
    Q_PROPERTY(bool canResume READ canResume NOTIFY changed FINAL)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
public:
    explicit HomeSpotlight(const TerminalApp &terminal, QObject *parent = nullptr);

    void set(const std::optional<Agent> &agent, const QDateTime &now);

    bool present() const { return m_agent.has_value(); }
    bool working() const { return m_agent && m_agent->isWorking(); }
    QString title() const { return m_agent ? m_agent->title() : QString(); }
    QString stateText() const;
    QString detail() const { return m_agent ? m_agent->detail.value_or(QString()) : QString(); }
    QString age() const { return m_age; }
    bool canResume() const { return m_agent && m_agent->canResume(); }
    /// What a screen reader says.
    QString spoken() const;

    /// Reopens the session in the user's terminal.
    Q_INVOKABLE void resume() const;
    Q_INVOKABLE QString terminalName() const;

Q_SIGNALS:
    void changed();

private:
    const TerminalApp &m_terminal;
    std::optional<Agent> m_agent;
    QString m_age;
    QString m_spokenAge;
};

} // namespace velto
