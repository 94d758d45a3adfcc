#include "Core/UI.h"

#include "Core/Prefs.h"
#include "Platform/Clock.h"

#include <algorithm>
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
    closeMenu();
    m_collapseTask.reset();
    m_expanded = expanded;
    m_onQuestion = false; // the question is no longer under the pointer
    m_rest.reset();
    setUnfolded(false, false);
    m_handover.reset();
    setKeyboardKept(false);
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

void UI::setUnfolded(bool unfolded, bool held)
{
    const bool before = this->unfolded();
    m_unfolded = unfolded;
    m_heldUnfolded = held;
    if (before == this->unfolded())
        return;
    m_unfoldedHeight = 0;
    Q_EMIT unfoldedChanged();
    Q_EMIT unfoldedHeightChanged();
}

void UI::questionHovered(bool inside)
{
    m_onQuestion = inside;
    m_rest = nullptr;
    if (inside != m_unfolded)
        m_rest = m_clock.after(inside ? kRest : kLeave, [this, inside] { setUnfolded(inside, m_heldUnfolded); });
}

void UI::holdUnfolded(bool hold)
{
    setUnfolded(m_unfolded, hold);
}

void UI::questionChanged()
{
    setUnfolded(false, m_heldUnfolded);
    if (asking && asking()) {
        questionHovered(m_onQuestion);
        return;
    }
    m_rest.reset();
    // Someone whose pointer rests on the strip row because of a question didn't come to open the panel.
    if (!m_expanded)
        awaitPointerGone();
}

void UI::setUnfoldedHeight(double height)
{
    height = std::max(height, 0.0);
    if (height == m_unfoldedHeight || !unfolded())
        return;
    m_unfoldedHeight = height;
    Q_EMIT unfoldedHeightChanged();
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
    return m_pinned || sheetOpen() || (unfinished && unfinished());
}

void UI::pointerChanged(bool inside)
{
    m_pointerInside = inside;
    m_leftMenu = m_menuOpen && !inside;
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
    if (m_expanded || m_menuOpen || m_staysClosed || (asking && asking()) || m_prefs.openMode() != Prefs::OpenMode::Hover)
        return;
    m_focusOnOpen = false;
    setHovering(false);
    setExpanded(true);
}

void UI::tapped()
{
    if (m_menuOpen)
        closeMenu();
    else if (!m_expanded)
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

void UI::setRoom(QSizeF room)
{
    if (room == m_room)
        return;
    m_room = room;
    Q_EMIT roomChanged();
}

void UI::setTextScale(double scale)
{
    if (scale == m_textScale)
        return;
    m_textScale = scale;
    Q_EMIT textScaleChanged();
}

void UI::awaitKeyboard()
{
    if (m_keyboard)
        return;
    m_handover = m_clock.after(kHandover, [this] { setKeyboardKept(m_expanded && !m_keyboard); });
}

void UI::setKeyboard(bool here)
{
    m_keyboard = here;
    if (!here)
        return;
    m_handover.reset();
    setKeyboardKept(false);
}

void UI::setKeyboardKept(bool kept)
{
    if (std::exchange(m_keyboardKept, kept) != kept)
        Q_EMIT keyboardKeptChanged();
}

void UI::setMenu(std::vector<MenuItem> menu)
{
    m_menu = std::move(menu);
    Q_EMIT menuChanged();
}

QStringList UI::menuTitles() const
{
    QStringList titles;
    for (const MenuItem &item : m_menu)
        titles.append(item.title);
    return titles;
}

QStringList UI::menuKeys() const
{
    QStringList keys;
    for (const MenuItem &item : m_menu)
        keys.append(item.keyText);
    return keys;
}

void UI::askForMenu()
{
    if (m_menuOpen || m_menu.empty())
        return;
    m_collapseTask.reset();
    m_menuOpen = true;
    Q_EMIT menuOpenChanged();
}

void UI::closeMenu()
{
    if (!m_menuOpen)
        return;
    m_menuOpen = false;
    m_menuHeight = 0;
    Q_EMIT menuOpenChanged();
    Q_EMIT menuHeightChanged();
    if (std::exchange(m_leftMenu, false))
        pointerChanged(false);
}

void UI::chooseFromMenu(int index)
{
    closeMenu();
    if (index < 0 || index >= int(m_menu.size()) || !m_menu.at(size_t(index)).action)
        return;
    const auto action = m_menu.at(size_t(index)).action;
    action();
}

bool UI::pressMenuKey(int key, int modifiers)
{
    const QKeyCombination pressed(Qt::KeyboardModifiers::fromInt(modifiers & ~int(Qt::KeypadModifier)), Qt::Key(key));
    for (int i = 0; i < int(m_menu.size()); ++i) {
        if (m_menu.at(size_t(i)).title.isEmpty() || m_menu.at(size_t(i)).key != pressed)
            continue;
        chooseFromMenu(i);
        return true;
    }
    return false;
}

void UI::setMenuHeight(double height)
{
    if (height == m_menuHeight || !m_menuOpen)
        return;
    m_menuHeight = height;
    Q_EMIT menuHeightChanged();
}

void UI::focusLost()
{
    closeMenu();
    if (m_expanded && !keptOpen() && !m_pointerInside)
        close();
}

void UI::openFocused()
{
    m_focusOnOpen = true;
    setHovering(false);
    setExpanded(true);
}

void UI::openOnQuestion()
{
    openFocused();
    Q_EMIT questionWanted();
}

bool UI::takeFocusOnOpen()
{
    return std::exchange(m_focusOnOpen, false);
}

} // namespace velto
