#pragma once

#include "Core/Peek.h"
#include "Core/PeekQueue.h"
#include "Core/VeltoSource.h"
#include "Platform/Timer.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <map>

namespace velto {

class Accessibility;
class AgentsSource;
class Applications;
class Clock;
class EverydaySource;
class GlanceSource;
class GoogleCalendar;
class Prefs;
class QuillboxSource;
class SignalsSource;
class TerminalApp;
class TodosSource;
class WorkSource;
class Workspace;

/// The one store that the whole presentation observes: it is above the sources, decides which tabs exist, refreshes on a
/// fixed schedule, forwards every change of a source as a change of its own, knows whether a screen is being recorded, and holds
/// the queue of Peeks. UI thread only; has no failures of its own.
class Hub : public QObject {
    Q_OBJECT
    Q_PROPERTY(velto::Tab selected READ selected NOTIFY selectedChanged FINAL)
    Q_PROPERTY(QDateTime updated READ updated NOTIFY updatedChanged FINAL)
    Q_PROPERTY(bool recording READ recording NOTIFY recordingChanged FINAL)
public:
    /// What the Hub uses; all of it outlives the Hub.
    struct Needs {
        Clock &clock;
        Accessibility &accessibility;
        Applications &applications;
        Workspace &workspace;
        Prefs &prefs;
        TerminalApp &terminal;
        GoogleCalendar &google;
        QuillboxSource &quillbox;
        TodosSource &todos;
        AgentsSource &agents;
        SignalsSource &signalsSource;
        EverydaySource &everyday;
        WorkSource &work;
        GlanceSource &glances;
        VeltoSource &home;
        VeltoSource &connect;
    };
    explicit Hub(const Needs &needs, QObject *parent = nullptr);
    ~Hub() override;

    /// The visible tabs, in order.
    QList<Tab> tabs() const;
    /// The source behind a tab; null for a tab that has none.
    VeltoSource *source(Tab tab) const;
    Tab selected() const { return m_selected; }
    QDateTime updated() const { return m_updated; }
    bool recording() const { return m_recording; }

    /// Selects a tab if it is visible, and the first one otherwise.
    Q_INVOKABLE void open(velto::Tab tab);
    /// Offers a key of the open panel to the visible tabs. True if one of them used it.
    bool takeKey(QKeyCombination key);
    /// Something is being typed in a visible tab.
    bool unfinished() const;
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
    void peekMoved();
    void answer(const QUuid &id, bool allowed);
    /// The user pressed the row of the Peek on show: resumes its session, opens its link, or asks for the panel on its tab.
    void act(const QUuid &id);

Q_SIGNALS:
    /// Something that the Hub or one of its sources publishes has changed.
    void changed();
    void selectedChanged();
    void updatedChanged();
    void peekChanged();
    void recordingChanged();
    /// The panel should open, with the keyboard.
    void panelWanted();

private:
    void followSources();
    void sourceChanged();
    void select(Tab tab);
    void fixSelection();
    void checkRecording();

    Needs m_needs;
    PeekQueue m_peeks;
    std::map<Tab, VeltoSource *> m_sources;
    Tab m_selected = Tab::Home;
    QDateTime m_updated;
    bool m_recording = false;
    TimerHandle m_tick;
};

} // namespace velto
