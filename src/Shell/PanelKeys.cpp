#include "Shell/PanelKeys.h"

#include "Core/UI.h"
#include "Hub/Hub.h"
#include "Shell/PanelContents.h"

#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

namespace velto {

namespace {

/// The first visible item below `root` with this property true; null if there is none.
QQuickItem *shownWith(const char *property, const QQuickItem *root)
{
    const auto children = root->childItems();
    for (QQuickItem *child : children) {
        if (!child->isVisible())
            continue;
        if (child->property(property).toBool())
            return child;
        if (QQuickItem *found = shownWith(property, child))
            return found;
    }
    return nullptr;
}

} // namespace

PanelKeys::PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, Hub &hub, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_ui(ui)
    , m_contents(contents)
    , m_hub(hub)
{
    m_window.installEventFilter(this);
    connect(&m_hub, &Hub::selectedChanged, this, &PanelKeys::leaveHidden);
}

bool PanelKeys::textFieldFocused() const
{
    const QQuickItem *item = m_window.activeFocusItem();
    return item && (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit"));
}

/// Whether the focused item or one around it has this property true: `takesReturn` on a button or a form that handles Return,
/// `keepsKeys` on what uses the arrow keys.
bool PanelKeys::focusHas(const char *property) const
{
    for (const QQuickItem *item = m_window.activeFocusItem(); item; item = item->parentItem()) {
        if (item->property(property).toBool())
            return true;
    }
    return false;
}

void PanelKeys::clearFocus()
{
    // Focusing the window's root item instead would hand the focus back to whatever had it last.
    while (QQuickItem *item = m_window.activeFocusItem()) {
        item->setFocus(false, Qt::OtherFocusReason);
        if (m_window.activeFocusItem() == item)
            break;
    }
}

// The page of another tab is only hidden, and a field in it would go on receiving keys.
void PanelKeys::leaveHidden()
{
    const auto leave = [this, left = QPointer<QQuickItem>(m_window.activeFocusItem())] {
        if (left && left == m_window.activeFocusItem() && !left->isVisible())
            clearFocus();
    };
    QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
}

/// Up and Down go to the rows of the page, wherever the focus was.
void PanelKeys::enterPage()
{
    const QQuickItem *focused = m_window.activeFocusItem();
    QQuickItem *page = shownWith("takesArrows", m_window.contentItem());
    if (page && page != focused && !(focused && page->isAncestorOf(focused)))
        page->forceActiveFocus(Qt::OtherFocusReason);
}

void PanelKeys::escape()
{
    if (textFieldFocused())
        clearFocus();
    else if (!m_hub.takeKey(Qt::Key_Escape))
        m_ui.close();
}

void PanelKeys::control(const QKeyEvent &key)
{
    if (key.key() == Qt::Key_Comma)
        m_ui.askForSettings();
    else if (m_ui.sheetOpen())
        return; // the tab under a sheet stays selected
    else if (key.key() >= Qt::Key_1 && key.key() <= Qt::Key_5)
        m_contents.openAt(key.key() - Qt::Key_1);
    else if (!key.isAutoRepeat())
        m_hub.takeKey(Qt::CTRL | Qt::Key(key.key()));
}

void PanelKeys::plain(const QKeyEvent &key)
{
    if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Up) {
        if (!m_hub.takeKey(Qt::Key(key.key())))
            enterPage();
    } else if ((key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) && !key.isAutoRepeat() && !textFieldFocused()
               && !focusHas("takesReturn")) {
        m_hub.takeKey(Qt::Key_Return);
    }
}

bool PanelKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !m_ui.expanded())
        return QObject::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (key.key() == Qt::Key_Escape) {
        if (!m_ui.sheetOpen()) // a sheet or a menu closes itself
            escape();
    } else if (modifiers == Qt::ControlModifier) {
        control(key);
    } else if (modifiers == Qt::NoModifier && !m_ui.sheetOpen() && !focusHas("keepsKeys")) {
        plain(key);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velto
