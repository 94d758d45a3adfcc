#pragma once

#include <QObject>

class QKeyEvent;
class QQuickItem;
class QQuickWindow;

namespace velto {

class Hub;
class PanelContents;
class UI;

/// The keyboard of the open panel: what has the focus, which tab is on show; the rest is for the tabs. Every key goes on to the
/// views, handled or not. UI thread only.
class PanelKeys : public QObject {
    Q_OBJECT
public:
    /// Listens to the keys of `window`, which outlives this.
    PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, Hub &hub, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void escape();
    void control(const QKeyEvent &key);
    void plain(const QKeyEvent &key);
    void enterPage();
    bool textFieldFocused() const;
    bool focusHas(const char *property) const;
    void clearFocus();
    void leaveHidden();

    QQuickWindow &m_window;
    UI &m_ui;
    PanelContents &m_contents;
    Hub &m_hub;
};

} // namespace velto
