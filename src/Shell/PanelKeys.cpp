#include "Shell/PanelKeys.h"

#include "Shell/PanelContents.h"
#include "Shell/UI.h"

#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>

namespace velto {

PanelKeys::PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_ui(ui)
    , m_contents(contents)
{
    m_window.installEventFilter(this);
}

bool PanelKeys::textFieldFocused() const
{
    const QQuickItem *item = m_window.activeFocusItem();
    return item && (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit"));
}

void PanelKeys::escape()
{
    if (textFieldFocused())
        m_window.contentItem()->forceActiveFocus();
    else
        m_ui.close();
}

bool PanelKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !m_ui.expanded())
        return QObject::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool control = key->modifiers() == Qt::ControlModifier;
    if (key->key() == Qt::Key_Escape && !m_ui.sheetOpen()) // a sheet or a menu closes itself
        escape();
    else if (control && key->key() >= Qt::Key_1 && key->key() <= Qt::Key_5)
        m_contents.openAt(key->key() - Qt::Key_1);
    else if (control && key->key() == Qt::Key_Comma)
        m_ui.askForSettings();
    return QObject::eventFilter(watched, event);
}

} // namespace velto
