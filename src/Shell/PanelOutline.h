#pragma once

#include "Shell/PanelGeometry.h"

#include <QObject>
#include <QSizeF>

namespace velto {

class CollapsedStrip;
class Hub;
class UI;

/// The outline of the black in the current state of the panel; the view moves towards it. It hangs from the top centre
/// of the window. UI thread only.
class PanelOutline : public QObject {
    Q_OBJECT
    Q_PROPERTY(double width READ width NOTIFY changed FINAL)
    Q_PROPERTY(double height READ height NOTIFY changed FINAL)
    Q_PROPERTY(double top READ top NOTIFY changed FINAL)
    Q_PROPERTY(double bottom READ bottom NOTIFY changed FINAL)
    Q_PROPERTY(double openWidth READ openWidth NOTIFY openSizeChanged FINAL)
    Q_PROPERTY(double openHeight READ openHeight NOTIFY openSizeChanged FINAL)
    Q_PROPERTY(double rowWidth READ rowWidth NOTIFY openSizeChanged FINAL)
    Q_PROPERTY(double rowHeight READ rowHeight NOTIFY openSizeChanged FINAL)
    Q_PROPERTY(double mostUnfolded READ mostUnfolded NOTIFY openSizeChanged FINAL)
    Q_PROPERTY(double factRoom READ factRoom NOTIFY factRoomChanged FINAL)
    Q_PROPERTY(bool peeking READ peeking NOTIFY changed FINAL)
public:
    PanelOutline(const Hub &hub, const UI &ui, const CollapsedStrip &strip, QObject *parent = nullptr);

    double width() const { return m_now.size.width(); }
    double height() const { return m_now.size.height(); }
    double top() const { return m_now.radii.top; }
    double bottom() const { return m_now.radii.bottom; }
    /// The size of the open panel, whether it is open or not.
    double openWidth() const { return openSize().width(); }
    double openHeight() const { return openSize().height(); }
    /// The size of the row under the strip, whether one is on show or not.
    QSizeF row() const;
    double rowWidth() const { return row().width(); }
    double rowHeight() const { return row().height(); }
    double mostUnfolded() const;
    /// How wide what the strip says on one side may be.
    double factRoom() const;
    /// The height of what is unfolded under the row now, as much of it as is seen.
    double unfolded() const;
    QSizeF size() const { return m_now.size; }
    OutlineRadii radii() const { return m_now.radii; }
    /// A row is on show under the strip.
    bool peeking() const { return m_now.panel == PanelSize::Peeking || m_now.panel == PanelSize::Unfolded; }
    PanelSize panelSize() const { return m_now.panel; }

Q_SIGNALS:
    void changed();
    void openSizeChanged();
    void factRoomChanged();

private:
    struct Shape {
        PanelSize panel = PanelSize::Collapsed;
        QSizeF size;
        OutlineRadii radii;
        bool operator==(const Shape &) const = default;
    };
    QSizeF openSize() const;
    Shape read() const;
    Shape withoutMenu() const;
    void update();

    const Hub &m_hub;
    const UI &m_ui;
    const CollapsedStrip &m_strip;
    Shape m_now;
};

} // namespace velto
