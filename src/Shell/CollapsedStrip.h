#pragma once

#include "Core/Prefs.h"

#include <QObject>
#include <QString>

namespace velto {

class AgentsSource;
class Clock;
class EverydaySource;
class Hub;
class TodosSource;

/// What the collapsed strip says: one fact on each side of the housing, or nothing at all. Follows the Hub. UI thread only.
class CollapsedStrip : public QObject {
    Q_OBJECT
    Q_PROPERTY(Left left READ left NOTIFY changed FINAL)
    Q_PROPERTY(Right right READ right NOTIFY changed FINAL)
    /// The countdown, or the time left until the next event.
    Q_PROPERTY(QString leftText READ leftText NOTIFY changed FINAL)
    Q_PROPERTY(int todos READ todos NOTIFY changed FINAL)
    Q_PROPERTY(bool overdue READ overdue NOTIFY changed FINAL)
    Q_PROPERTY(int running READ running NOTIFY changed FINAL)
    Q_PROPERTY(int waiting READ waiting NOTIFY changed FINAL)
    Q_PROPERTY(bool quiet READ quiet NOTIFY changed FINAL)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
    Q_PROPERTY(QString summarySymbol READ summarySymbol NOTIFY changed FINAL)
    Q_PROPERTY(QString summaryText READ summaryText NOTIFY changed FINAL)
    Q_PROPERTY(Tone summaryTone READ summaryTone NOTIFY changed FINAL)
public:
    enum class Left : int { Nothing, Recording, Focus, Todos, Event, Running };
    Q_ENUM(Left)
    enum class Right : int { None, Waiting, Working, Playing };
    Q_ENUM(Right)
    enum class Tone : int { Info, Waiting, Overdue };
    Q_ENUM(Tone)

    /// What the strip reads; all of it outlives the strip.
    struct Needs {
        const Hub &hub;
        const Clock &clock;
        const Prefs &prefs;
        const EverydaySource &everyday;
        const AgentsSource &agents;
        const TodosSource &todos;
    };
    explicit CollapsedStrip(const Needs &needs, QObject *parent = nullptr);

    Left left() const { return m_now.left; }
    Right right() const { return m_now.right; }
    QString leftText() const { return m_now.leftText; }
    /// Todos due by today; 0 while the module is off.
    int todos() const { return m_now.todos; }
    /// Some of them are overdue.
    bool overdue() const { return m_now.overdueTodos > 0; }
    /// Sessions that work, and sessions that wait for the user; 0 while the module is off.
    int running() const { return m_now.running; }
    int waiting() const { return m_now.waiting; }
    /// There is nothing to show: the strip is no larger than the housing.
    bool quiet() const { return m_now.quiet; }
    /// The whole strip in one sentence, for a screen reader.
    QString spoken() const { return m_now.spoken; }

    /// The line under the strip while the pointer rests on it.
    QString summarySymbol() const { return m_now.summarySymbol; }
    QString summaryText() const { return m_now.summaryText; }
    Tone summaryTone() const { return m_now.summaryTone; }

Q_SIGNALS:
    /// Emitted only if any of the above has changed.
    void changed();

private:
    struct Shown {
        Left left = Left::Nothing;
        Right right = Right::None;
        QString leftText;
        int todos = 0;
        int overdueTodos = 0;
        int running = 0;
        int waiting = 0;
        QString spoken;
        QString summarySymbol;
        QString summaryText;
        Tone summaryTone = Tone::Info;
        bool quiet = true;
        bool operator==(const Shown &) const = default;
    };
    Shown read() const;
    void readLeft(Shown &shown) const;
    void readRight(Shown &shown) const;
    QString spokenFor(const Shown &shown) const;
    void summarize(Shown &shown) const;
    bool isOn(Prefs::Module module) const;
    qint64 secondsToEvent() const;
    void update();

    Needs m_needs;
    Shown m_now;
};

} // namespace velto
