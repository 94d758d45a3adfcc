#pragma once

#include "Core/Peek.h"
#include "Core/PeekQueue.h"
#include "Core/Prefs.h"
#include "Core/VeltoSource.h"
#include "Platform/Clock.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <map>
#include <memory>

namespace velto {

class Accessibility;
class AgentsSource;
class Applications;
class ConnectSource;
class EverydaySource;
class GlanceSource;
class GoogleCalendar;
class HomeSource;
class QuillboxSource;
class SignalsSource;
class TerminalApp;
class TodosSource;
class WorkSource;
class Workspace;

/// The one store that the whole presentation looks at: it owns the sources, decides which tabs exist, refreshes on a fixed
/// schedule, forwards every change of a source as a change of its own, knows whether a screen is being recorded, and holds
/// the queue of Peeks. UI thread only; has no failures of its own.
class Hub : public QObject {
    Q_OBJECT
    Q_MOC_INCLUDE("Tabs/Agents/AgentsSource.h")
    Q_PROPERTY(velto::Tab selected READ selected NOTIFY selectedChanged FINAL)
    Q_PROPERTY(QDateTime updated READ updated NOTIFY updatedChanged FINAL)
    Q_PROPERTY(bool recording READ recording NOTIFY recordingChanged FINAL)
    Q_PROPERTY(velto::AgentsSource *agents READ agents CONSTANT FINAL)
public:
    /// What the Hub leans on; all of it outlives the Hub.
    struct Needs {
        Clock &clock;
        Accessibility &accessibility;
        Applications &applications;
        Workspace &workspace;
        Prefs &prefs;
        TerminalApp &terminal;
        GoogleCalendar &google;
        std::unique_ptr<QuillboxSource> quillbox;
        std::unique_ptr<TodosSource> todos;
        std::unique_ptr<AgentsSource> agents;
        std::unique_ptr<SignalsSource> signalsSource;
        std::unique_ptr<EverydaySource> everyday;
        std::unique_ptr<WorkSource> work;
        std::unique_ptr<GlanceSource> glances;
        /// The two tabs that look at all the rest are made last.
        std::function<std::unique_ptr<HomeSource>(Hub &)> makeHome;
        std::function<std::unique_ptr<ConnectSource>(Hub &)> makeConnect;
    };
    explicit Hub(Needs needs, QObject *parent = nullptr);
    ~Hub() override;

    QuillboxSource *quillbox() const { return m_quillbox.get(); }
    TodosSource *todos() const { return m_todos.get(); }
    AgentsSource *agents() const { return m_agents.get(); }
    SignalsSource *signalsSource() const { return m_signals.get(); }
    EverydaySource *everyday() const { return m_everyday.get(); }
    WorkSource *work() const { return m_work.get(); }
    GlanceSource *glances() const { return m_glances.get(); }
    HomeSource *home() const { return m_home.get(); }
    ConnectSource *connectTab() const { return m_connect.get(); }
    const TerminalApp &terminal() const { return m_terminal; }
    Prefs &prefs() const { return m_prefs; }

    /// The visible tabs, in order.
    QList<Tab> tabs() const;
    /// The source behind a tab; null for a tab that has none.
    VeltoSource *source(Tab tab) const;
    Tab selected() const { return m_selected; }
    QDateTime updated() const { return m_updated; }
    /// The time of day by the clock that the stores go by.
    QDateTime now() const { return m_clock.wallTime(); }
    bool recording() const { return m_recording; }

    /// Selects a tab if it is visible, and the first one otherwise.
    Q_INVOKABLE void open(velto::Tab tab);
    /// Asks every source to read again; returns at once. `force` overrides the sources that keep longer intervals of their own.
    Q_INVOKABLE void refresh(bool force);

    bool hasPeek() const { return m_peeks.onShow().has_value(); }
    /// The Peek on show; an empty one if there is none.
    Peek peek() const { return m_peeks.onShow().value_or(Peek{}); }
    /// A question is on show.
    bool asking() const { return hasPeek() && m_peeks.onShow()->isQuestion(); }
    void show(Peek peek);
    void dismissPeek();
    /// See PeekQueue.
    void pressBegan(const QUuid &id);
    void answer(const QUuid &id, bool allowed);
    /// The user pressed the row of the Peek on show: resumes its session, opens its link, or asks for the panel on its tab.
    void act(const QUuid &id);

Q_SIGNALS:
    /// Something that the Hub or one of its sources publishes has changed.
    void changed();
    void tabsChanged();
    void selectedChanged();
    void updatedChanged();
    void peekChanged();
    void recordingChanged();
    /// The panel is to open, with the keyboard.
    void panelWanted();

private:
    void followSources(GoogleCalendar &google);
    void sourceChanged();
    void select(Tab tab);
    void fixSelection();
    void checkRecording();

    Clock &m_clock;
    Applications &m_applications;
    Workspace &m_workspace;
    Prefs &m_prefs;
    TerminalApp &m_terminal;
    PeekQueue m_peeks;
    std::unique_ptr<QuillboxSource> m_quillbox; // before the agents, which show its rows
    std::unique_ptr<TodosSource> m_todos;
    std::unique_ptr<AgentsSource> m_agents;
    std::unique_ptr<SignalsSource> m_signals;
    std::unique_ptr<EverydaySource> m_everyday;
    std::unique_ptr<WorkSource> m_work;
    std::unique_ptr<GlanceSource> m_glances;
    std::unique_ptr<HomeSource> m_home;
    std::unique_ptr<ConnectSource> m_connect;
    std::map<Tab, VeltoSource *> m_sources;
    QList<Tab> m_lastTabs;
    Tab m_selected = Tab::Home;
    QDateTime m_updated;
    bool m_recording = false;
    TimerHandle m_tick;
};

} // namespace velto
