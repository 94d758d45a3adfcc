#pragma once

#include "Core/Peek.h"
#include "Platform/Timer.h"
#include "Shell/PanelGeometry.h"

#include <QHash>
#include <QObject>
#include <QRect>
#include <functional>
#include <optional>

namespace velto {

class Clock;
class Displays;
class HotKey;
class Hub;
class PanelOutline;
class PanelWindow;
class Prefs;
class Session;
class StatusItem;
class UI;

/// Ties the stores to the window: when it opens, how large it is, when it goes. UI thread only; outlived by what it is given.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    struct Needs {
        Clock &clock;
        Hub &hub;
        Prefs &prefs;
        UI &ui;
        const PanelOutline &outline;
        Displays &displays;
        PanelWindow &panelWindow;
        Session &session;
    };
    explicit AppDelegate(Needs needs, QObject *parent = nullptr);

    /// Puts the window on the screen for the first time.
    void showPanel();
    void addStatusItem(StatusItem &item);
    void addHotKey(HotKey &hotKey);
    /// One second later, an example of what a Peek looks like.
    void demoPeek();
    static Peek examplePeek();
    /// What the command line, the desktop's menu and its keys can ask for by name, beside "open", "open-and-search", "settings",
    /// "welcome" and "demo-peek".
    void addAction(const QString &name, const std::function<void()> &action);
    /// Does what this name stands for; nothing for a name that nobody knows.
    void act(const QString &name);

    /// Opens the panel with the keyboard; with `search`, on the search field of the tab that has one.
    void open(bool search);

    /// The settings take the panel's place.
    void showSettings();
    void showWelcome();
    /// The user is through with the welcome.
    void welcomed();

Q_SIGNALS:
    void quitWanted();
    void settingsWanted();
    void welcomeWanted();

private:
    void layout(bool animated);
    void takeKeyboard();
    void place(const QRect &frame);
    /// Where in the window the strip row is while the panel is closed; empty while it is open or hidden.
    QRect stripRow() const;
    void expandedChanged();
    void menuChanged();
    void peekChanged();
    void hoveringChanged();

    Needs m_needs;
    QHash<QString, std::function<void()>> m_actions;
    std::optional<QRect> m_frame;
    bool m_started = false;
    bool m_shown = false;
    bool m_hadPeek = false;
    TimerHandle m_shrink;
    TimerHandle m_peekGone;
    TimerHandle m_hoverGone;
    TimerHandle m_refresh;
    TimerHandle m_demo;
};

} // namespace velto
