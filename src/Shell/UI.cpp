#include "Core/UI.h"

#include "Core/Prefs.h"

#include <utility>

namespace velto {

UI::UI(Clock &clock, const Prefs &prefs, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_prefs(prefs)
{
}

void UI::setExpanded(bool expanded)
{
    if (expanded == m_expanded)
        return;
    m_collapseTask.reset();
    m_expanded = expanded;
    Q_EMIT expandedChanged();
    if (!m_expanded)
        awaitPointerGone();
}

void UI::awaitPointerGone()
{
    if (pointerOnStrip && pointerOnStrip())
        m_staysClosed = m_clock.after(kLook, [this] { awaitPointerGone(); });
    else
        m_staysClosed.reset();
}

void UI::setPinned(bool pinned)
{
    if (pinned == m_pinned)
        return;
    m_pinned = pinned;
    Q_EMIT pinnedChanged();
}

void UI::setHovering(bool hovering)
{
    if (hovering == m_hovering)
        return;
    m_hovering = hovering;
    Q_EMIT hoveringChanged();
}

void UI::setVelto(QSizeF size)
{
    if (size == m_velto)
        return;
    m_velto = size;
    Q_EMIT veltoChanged();
}

void UI::setComposited(bool composited)
{
    if (composited == m_composited)
        return;
    m_composited = composited;
    Q_EMIT compositedChanged();
}

bool UI::keptOpen() const
{
    return m_pinned || m_menuOpen || sheetOpen() || (unfinished && unfinished());
}

void UI::pointerChanged(bool inside)
{
    m_pointerInside = inside;
    m_collapseTask.reset();
    if (m_staysClosed)
        awaitPointerGone();
    if (inside)
        return;
    m_collapseTask = m_clock.after(kLeave, [this] {
        if (!keptOpen())
            close();
    });
}

void UI::stripEntered()
{
    m_collapseTask.reset();
    if (m_expanded || m_staysClosed || m_prefs.openMode() != Prefs::OpenMode::Hover)
        return;
    m_focusOnOpen = false;
    setHovering(false);
    setExpanded(true);
}

void UI::tapped()
{
    if (!m_expanded)
        openFocused();
}

void UI::toggle()
{
    m_focusOnOpen = true;
    setExpanded(!m_expanded);
}

void UI::close()
{
    m_collapseTask.reset();
    setHovering(false);
    setExpanded(false);
}

void UI::askForMenu()
{
    m_menuOpen = true;
    Q_EMIT menuWanted();
}

void UI::menuClosed()
{
    m_menuOpen = false;
    if (!m_pointerInside)
        pointerChanged(false);
}

void UI::focusLost()
{
    if (m_expanded && !keptOpen() && !m_pointerInside)
        close();
}

void UI::openFocused()
{
    m_focusOnOpen = true;
    setHovering(false);
    setExpanded(true);
}

bool UI::takeFocusOnOpen()
{
    return std::exchange(m_focusOnOpen, false);
}

} // namespace velto
