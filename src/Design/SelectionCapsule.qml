import QtQuick
import Velto.Design

/// The capsule behind the selected tab, which glides to the next one. Put it into the parent of the row of tabs, before the
/// row.
RoundedBox {
    id: root

    /// The selected tab; null hides the capsule.
    property Item target: null
    /// The row that contains the tab.
    required property Item row
    /// Off while it is placed for the first time.
    property bool glides: true

    x: root.row.x + (root.target ? root.target.x : 0)
    y: root.row.y + (root.target ? root.target.y : 0)
    width: root.target ? root.target.width : 0
    height: root.target ? root.target.height : 0
    visible: root.target !== null
    radius: root.height / 2
    edge: Theme.cardEdge
    edgeColor: Theme.accent
    color: Theme.at(Theme.accent, 0.22)

    Behavior on x {
        enabled: root.glides
        Spring {}
    }
    Behavior on width {
        enabled: root.glides
        Spring {}
    }
}
