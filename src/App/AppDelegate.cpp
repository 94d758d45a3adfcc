#include "App/AppDelegate.h"

#include "Core/Prefs.h"
#include "Core/UI.h"
#include "Hub/Hub.h"
#include "Platform/Clock.h"
#include "Platform/HotKey.h"
#include "Platform/PanelWindow.h"
#include "Platform/Session.h"
#include "Platform/StatusItem.h"
#include "Shell/PanelOutline.h"

#include <QKeySequence>
#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString keyText(QKeyCombination key)
{
    return QKeySequence(key).toString(QKeySequence::NativeText);
}

} // namespace

AppDelegate::AppDelegate(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
    connect(&m_needs.ui, &UI::expandedChanged, this, &AppDelegate::expandedChanged);
    connect(&m_needs.ui, &UI::menuOpenChanged, this, &AppDelegate::menuChanged);
    connect(&m_needs.ui, &UI::menuHeightChanged, this, [this] { layout(true); });
    connect(&m_needs.ui, &UI::hoveringChanged, this, &AppDelegate::hoveringChanged);
    m_needs.ui.unfinished = [&hub = m_needs.hub] { return hub.unfinished(); };
    m_needs.ui.asking = [&hub = m_needs.hub] { return hub.asking(); };
    m_needs.ui.pointer = [this] { return m_needs.panelWindow.pointer(); };
    m_needs.ui.pointerOnStrip = [this] {
        const auto pointer = m_needs.panelWindow.pointer();
        return pointer && stripRow().contains(*pointer);
    };
    connect(&m_needs.ui, &UI::unfoldedHeightChanged, this, [this] { layout(true); });
    connect(&m_needs.ui, &UI::textScaleChanged, this, [this] { layout(true); });
    connect(&m_needs.ui, &UI::keyboardWanted, this, &AppDelegate::takeKeyboard);
    connect(&m_needs.ui, &UI::settingsWanted, this, &AppDelegate::showSettings);
    connect(&m_needs.hub, &Hub::peekChanged, this, &AppDelegate::peekChanged);
    connect(&m_needs.hub, &Hub::peekChanged, &m_needs.ui, &UI::questionChanged);
    connect(&m_needs.hub, &Hub::panelWanted, this, [this] { open(false); });
    connect(&m_needs.displays, &Displays::changed, this, [this] { layout(false); });
    connect(&m_needs.session, &Session::lockedChanged, this, [this] { layout(false); });
    connect(&m_needs.session, &Session::woke, this, [this] { m_needs.hub.refresh(false); });
    connect(&m_needs.panelWindow, &PanelWindow::pressedElsewhere, &m_needs.ui, &UI::focusLost);
    connect(&m_needs.panelWindow, &PanelWindow::compositedChanged, this, [this] {
        m_needs.ui.setComposited(m_needs.panelWindow.composited());
        layout(false);
    });
    addAction(u"open"_s, [this] { open(false); });
    addAction(u"open-and-search"_s, [this] { open(true); });
    addAction(u"settings"_s, [this] { showSettings(); });
    addAction(u"welcome"_s, [this] { showWelcome(); });
    addAction(u"demo-peek"_s, [this] { demoPeek(); });
}

void AppDelegate::showPanel()
{
    m_started = true;
    m_needs.ui.setComposited(m_needs.panelWindow.composited());
    layout(false);
}

void AppDelegate::addStatusItem(StatusItem &item)
{
    const std::vector<MenuItem> menu{
        {tr("Open Velto"), {}, {}, [this] { open(false); }},
        {tr("Settings…"), Qt::CTRL | Qt::Key_Comma, keyText(Qt::CTRL | Qt::Key_Comma), [this] { showSettings(); }},
        {tr("Welcome & Setup…"), {}, {}, [this] { showWelcome(); }},
        {},
        {tr("Quit Velto"), Qt::CTRL | Qt::Key_Q, keyText(Qt::CTRL | Qt::Key_Q), [this] { Q_EMIT quitWanted(); }},
    };
    m_needs.ui.setMenu(menu);
    item.show(tr("Velto"), menu, [this] { m_needs.ui.askForMenu(); });
}

void AppDelegate::addHotKey(HotKey &hotKey)
{
    hotKey.registerHotKey([this] { m_needs.clock.post(this, [this] { open(true); }); });
}

Peek AppDelegate::examplePeek()
{
    Peek peek;
    peek.symbol = u"hand.raised.fill"_s;
    peek.text = tr("velto-app needs you");
    peek.tone = Peek::Tone::Warn;
    peek.tab = Tab::Agents;
    return peek;
}

void AppDelegate::demoPeek()
{
    m_demo = m_needs.clock.after(1s, [this] { m_needs.hub.show(examplePeek()); });
}

void AppDelegate::addAction(const QString &name, const std::function<void()> &action)
{
    m_actions.insert(name, action);
}

void AppDelegate::act(const QString &name)
{
    if (const auto action = m_actions.value(name))
        action();
}

void AppDelegate::open(bool search)
{
    if (m_needs.ui.expanded())
        takeKeyboard();
    if (m_needs.hub.asking()) {
        m_needs.ui.openOnQuestion(); // a question is shown before what was asked for
        return;
    }
    m_needs.ui.openFocused();
    // A sheet or menu over the tab keeps the keyboard until it is closed.
    if (search && !m_needs.ui.sheetOpen())
        m_needs.hub.takeKey(Qt::CTRL | Qt::Key_F);
}

void AppDelegate::showSettings()
{
    m_needs.ui.close();
    Q_EMIT settingsWanted();
}

void AppDelegate::showWelcome()
{
    Q_EMIT welcomeWanted();
}

void AppDelegate::welcomed()
{
    m_needs.prefs.setOnboarded(true);
    m_needs.hub.refresh(true);
    Peek peek;
    peek.symbol = u"hand.point.up.left"_s;
    peek.text = tr("Rest the pointer here to open Velto");
    peek.tone = Peek::Tone::Info;
    peek.tab = Tab::Home;
    m_needs.hub.show(std::move(peek));
}

// To grow, the window is resized at once and the black moves within it; to shrink, it waits until the black has arrived.
void AppDelegate::layout(bool animated)
{
    if (!m_started)
        return;
    m_shrink.reset();
    const std::optional<Display> display = chooseDisplay(m_needs.displays.all());
    if (!display || m_needs.session.locked()) {
        m_needs.panelWindow.hide();
        m_shown = false;
        m_frame.reset();
        return;
    }
    m_needs.ui.setRoom(display->frame.size());
    m_needs.ui.setVelto(measureHousing(*display));
    QSizeF wanted = panelSize(m_needs.ui.velto(), m_needs.outline.panelSize(), m_needs.outline.row(), m_needs.outline.unfolded());
    wanted = wanted.expandedTo(m_needs.outline.size());
    if (m_needs.panelWindow.keepsWidth())
        wanted.setWidth(std::max({wanted.width(), m_needs.outline.openWidth(), m_needs.outline.rowWidth()}));
    const QRect target = hangFrom(*display, wanted);
    if (animated && m_frame && m_needs.ui.composited() && target != *m_frame && m_frame->contains(target))
        m_shrink = m_needs.clock.after(kSpringTime, [this] { layout(false); });
    else
        place(target);
}

void AppDelegate::takeKeyboard()
{
    m_needs.panelWindow.takeFocus();
    m_needs.ui.awaitKeyboard();
}

QRect AppDelegate::stripRow() const
{
    if (!m_frame || m_needs.ui.expanded())
        return {};
    const QSizeF housing = m_needs.ui.velto();
    QRectF row({}, QSizeF(panelSize(housing, m_needs.outline.panelSize(), m_needs.outline.row()).width(), housing.height()));
    row.moveCenter(QRectF({}, m_frame->size()).center());
    row.moveTop(0);
    return row.toAlignedRect();
}

void AppDelegate::place(const QRect &frame)
{
    if (m_frame != frame) {
        m_frame = frame;
        m_needs.panelWindow.place(frame);
    }
    if (!std::exchange(m_shown, true))
        m_needs.panelWindow.show();
}

void AppDelegate::expandedChanged()
{
    m_needs.hub.peekMoved();
    layout(true);
    m_needs.panelWindow.watchPresses(m_needs.ui.expanded());
    if (!m_needs.ui.expanded()) {
        m_needs.panelWindow.returnFocus();
        return;
    }
    m_needs.panelWindow.raise();
    if (m_needs.ui.takeFocusOnOpen())
        takeKeyboard();
    m_refresh = m_needs.clock.after(450ms, [this] { m_needs.hub.refresh(false); });
}

// The menu has the keyboard while it is open.
void AppDelegate::menuChanged()
{
    const bool open = m_needs.ui.menuOpen();
    m_needs.panelWindow.watchPresses(open || m_needs.ui.expanded());
    if (open)
        takeKeyboard();
    else if (!m_needs.ui.expanded())
        m_needs.panelWindow.returnFocus();
}

void AppDelegate::peekChanged()
{
    const bool hasPeek = m_needs.hub.hasPeek();
    if (std::exchange(m_hadPeek, hasPeek) == hasPeek || m_needs.ui.expanded())
        return;
    if (hasPeek) {
        layout(false);
        return;
    }
    m_peekGone = m_needs.clock.after(kSpringTime, [this] {
        if (!m_needs.ui.expanded() && !m_needs.hub.hasPeek())
            layout(false);
    });
}

void AppDelegate::hoveringChanged()
{
    if (m_needs.ui.expanded())
        return;
    if (m_needs.ui.hovering()) {
        layout(false);
        return;
    }
    m_hoverGone = m_needs.clock.after(420ms, [this] {
        if (!m_needs.ui.expanded() && !m_needs.ui.hovering() && !m_needs.hub.hasPeek())
            layout(false);
    });
}

} // namespace velto
