#pragma once

#include <QObject>

class QQuickItem;
class QQuickWindow;

namespace velto {

class PanelContents;
class UI;

/// The keyboard of the open panel. Every key goes on to the views, handled or not. UI thread only.
class PanelKeys : public QObject {
    Q_OBJECT
public:
    /// Listens to the keys of `window`, which outlives this.
    PanelKeys(QQuickWindow &window, UI &ui, PanelContents &contents, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void escape();
    bool textFieldFocused() const;

    QQuickWindow &m_window;
    UI &m_ui;
    PanelContents &m_contents;
};

} // namespace velto
