#pragma once

#include <QObject>

class QKeyEvent;
class QQuickItem;
class QQuickWindow;

namespace velto {

class Hub;
class PanelContents;
class UI;

/// The keyboard of the open panel and of its list of todos. Every key goes on to the views, handled or not. UI thread only.
class PanelKeys : public QObject {
    Q_OBJECT
public:
    /// Listens to the keys of `window`, which outlives this.
    PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, Hub &hub, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void escape();
    void clearFocus();
    void press(const QKeyEvent &key);
    void pressWithControl(int key);
    void pressInList(int key);
    bool textFieldFocused() const;
    bool controlFocused() const;

    QQuickWindow &m_window;
    UI &m_ui;
    PanelContents &m_contents;
    Hub &m_hub;
};

} // namespace velto
