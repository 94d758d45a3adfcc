#pragma once

#include "Platform/StatusItem.h"
#include "Platform/Timer.h"

#include <QObject>
#include <QPoint>
#include <QSizeF>
#include <QStringList>
#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace velto {

class Clock;
class Prefs;

/// The state of the panel: whether it is open, and what the pointer, taps and the keyboard do to it. UI thread only.
class UI : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool expanded READ expanded NOTIFY expandedChanged FINAL)
    Q_PROPERTY(bool pinned READ pinned NOTIFY pinnedChanged FINAL)
    Q_PROPERTY(bool hovering READ hovering NOTIFY hoveringChanged FINAL)
    Q_PROPERTY(bool menuOpen READ menuOpen NOTIFY menuOpenChanged FINAL)
    Q_PROPERTY(double menuHeight READ menuHeight WRITE setMenuHeight NOTIFY menuHeightChanged FINAL)
    Q_PROPERTY(QStringList menuTitles READ menuTitles NOTIFY menuChanged FINAL)
    Q_PROPERTY(QStringList menuKeys READ menuKeys NOTIFY menuChanged FINAL)
    Q_PROPERTY(QSizeF room READ room NOTIFY roomChanged FINAL)
    Q_PROPERTY(bool unfolded READ unfolded NOTIFY unfoldedChanged FINAL)
    Q_PROPERTY(double unfoldedHeight READ unfoldedHeight WRITE setUnfoldedHeight NOTIFY unfoldedHeightChanged FINAL)
    Q_PROPERTY(QSizeF velto READ velto NOTIFY veltoChanged FINAL)
    Q_PROPERTY(bool keyboardKept READ keyboardKept NOTIFY keyboardKeptChanged FINAL)
    Q_PROPERTY(bool composited READ composited NOTIFY compositedChanged FINAL)
public:
    /// How long the pointer may be away before the panel closes.
    static constexpr std::chrono::milliseconds kLeave{400};
    /// How long the pointer rests on a question before it unfolds.
    static constexpr std::chrono::milliseconds kRest{250};
    /// How long a desktop takes at most to hand over the keyboard.
    static constexpr std::chrono::milliseconds kHandover{1000};
    /// How often to check whether the pointer under which the panel was closed has gone, in case its leaving goes unheard.
    static constexpr std::chrono::milliseconds kLook{1000};

    UI(Clock &clock, const Prefs &prefs, QObject *parent = nullptr);

    bool expanded() const { return m_expanded; }
    void setExpanded(bool expanded);
    bool pinned() const { return m_pinned; }
    Q_INVOKABLE void setPinned(bool pinned);
    /// The pointer rests on the strip and a line under it says what it is about. Nothing sets this at present.
    bool hovering() const { return m_hovering; }
    void setHovering(bool hovering);
    /// Whether the question on show is unfolded under its row: the pointer rests on it, or the keyboard is there.
    bool unfolded() const { return m_unfolded || m_heldUnfolded; }
    /// The pointer came to a question or its unfolded part, or left it.
    Q_INVOKABLE void questionHovered(bool inside);
    /// The keyboard came to a question, or left it.
    Q_INVOKABLE void holdUnfolded(bool hold);
    /// Another question, or none, is on show.
    void questionChanged();
    /// The height of all of the unfolded part in the strip; 0 until its view has come.
    double unfoldedHeight() const { return unfolded() ? m_unfoldedHeight : 0; }
    void setUnfoldedHeight(double height);
    /// The size of the camera housing, or of its substitute.
    QSizeF velto() const { return m_velto; }
    void setVelto(QSizeF size);
    /// The size of the display, which nothing of ours exceeds.
    QSizeF room() const { return m_room; }
    void setRoom(QSizeF room);
    /// How much larger than drawn the user wants letters, 1 to 2; the open panel grows with them.
    double textScale() const { return m_textScale; }
    void setTextScale(double scale);
    /// The desktop was asked for the keyboard and hasn't given it to the open panel: what the user types goes elsewhere.
    bool keyboardKept() const { return m_keyboardKept; }
    /// The desktop has been asked for the keyboard.
    void awaitKeyboard();
    /// The window has the keyboard, or lost it.
    void setKeyboard(bool here);
    /// Whether the window can have half-transparent pixels.
    bool composited() const { return m_composited; }
    void setComposited(bool composited);

    /// Something unfinished in the panel keeps it open: a todo being written, or a sheet.
    std::function<bool()> unfinished;
    /// Whether a question is on show. Who comes to answer it may pass over the strip row.
    std::function<bool()> asking;
    /// Whether the pointer is really over the strip row. What the window hears of it is late while its size changes.
    std::function<bool()> pointerOnStrip;
    /// Where the pointer really is, in the window's coordinates; nothing if that can't be determined.
    std::function<std::optional<QPoint>()> pointer;
    Q_INVOKABLE void sheetOpened() { ++m_sheets; }
    Q_INVOKABLE void sheetClosed() { --m_sheets; }
    /// A sheet or a menu has the keys.
    bool sheetOpen() const { return m_sheets > 0 || m_menuOpen; }

    bool pointerInside() const { return m_pointerInside; }
    /// The pointer came to the window or left it.
    Q_INVOKABLE void pointerChanged(bool inside);
    /// The pointer came to the strip row itself. One that was already there when the panel closed or a question left doesn't
    /// count.
    Q_INVOKABLE void stripEntered();
    /// The strip was pressed.
    Q_INVOKABLE void tapped();
    /// The default action of assistive technology.
    Q_INVOKABLE void toggle();
    Q_INVOKABLE void close();
    /// The program's own menu; an item without a title is a separator.
    void setMenu(std::vector<MenuItem> menu);
    QStringList menuTitles() const;
    QStringList menuKeys() const; ///< beside each title, as this platform writes keys
    /// The user asked for the menu. The panel stays as it is until the menu closes; under the strip the black makes room for it.
    Q_INVOKABLE void askForMenu();
    Q_INVOKABLE void closeMenu();
    /// Closes the menu and runs the item at this index.
    Q_INVOKABLE void chooseFromMenu(int index);
    /// Runs the menu item that has this key; false if there is none.
    Q_INVOKABLE bool pressMenuKey(int key, int modifiers);
    bool menuOpen() const { return m_menuOpen; }
    /// The room that the menu takes under the strip; 0 without one.
    double menuHeight() const { return m_menuOpen && !m_expanded ? m_menuHeight : 0; }
    void setMenuHeight(double height);
    /// The user asked for the settings window.
    Q_INVOKABLE void askForSettings() { Q_EMIT settingsWanted(); }
    /// The user is about to type in the panel, which may have been opened without the keyboard.
    Q_INVOKABLE void askForKeyboard() { Q_EMIT keyboardWanted(); }
    /// The window lost the keyboard, or the user pressed somewhere else.
    void focusLost();

    /// Opens the panel with the keyboard.
    Q_INVOKABLE void openFocused();
    /// Opens the panel with the keyboard on the question on show.
    void openOnQuestion();
    /// Whether the opening under way wants the keyboard; asking clears it.
    bool takeFocusOnOpen();

Q_SIGNALS:
    void expandedChanged();
    void pinnedChanged();
    void hoveringChanged();
    void unfoldedChanged();
    void unfoldedHeightChanged();
    void questionWanted();
    void veltoChanged();
    void compositedChanged();
    void keyboardKeptChanged();
    void menuOpenChanged();
    void menuHeightChanged();
    void menuChanged();
    void roomChanged();
    void textScaleChanged();
    void keyboardWanted();
    void settingsWanted();

private:
    bool keptOpen() const;
    void awaitPointerGone();
    void setUnfolded(bool unfolded, bool held);
    void setKeyboardKept(bool kept);

    Clock &m_clock;
    const Prefs &m_prefs;
    bool m_expanded = false;
    bool m_pinned = false;
    bool m_hovering = false;
    bool m_focusOnOpen = false;
    bool m_unfolded = false;
    bool m_heldUnfolded = false;
    bool m_onQuestion = false; ///< the pointer is
    double m_unfoldedHeight = 0;
    bool m_composited = true;
    bool m_keyboard = false;
    bool m_keyboardKept = false;
    bool m_pointerInside = false;
    bool m_menuOpen = false;
    bool m_leftMenu = false; ///< the pointer went while the menu was open
    double m_menuHeight = 0;
    std::vector<MenuItem> m_menu;
    QSizeF m_room{780, 520};
    double m_textScale = 1;
    int m_sheets = 0;
    QSizeF m_velto{185, 32};
    TimerHandle m_collapseTask;
    TimerHandle m_handover;
    TimerHandle m_rest; ///< until the question under the pointer unfolds, or folds behind it
    TimerHandle m_staysClosed; ///< while the pointer is where the panel was closed under it
};

} // namespace velto
