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

    /// The tab it is behind or on its way to.
    property Item tab: null
    /// Whether it is on its way. Where the tab itself is moved or resized, the capsule belongs to it.
    property bool gliding: false

    function follow(): void {
        if (!root.target || root.target === root.tab)
            return;
        root.gliding = root.glides && root.tab !== null;
        root.tab = root.target;
    }
    onTargetChanged: root.follow()
    Component.onCompleted: root.follow()

    x: root.row.x + (root.tab ? root.tab.x : 0)
    y: root.row.y + (root.tab ? root.tab.y : 0)
    width: root.tab ? root.tab.width : 0
    height: root.tab ? root.tab.height : 0
    visible: root.target !== null
    radius: root.height / 2
    edge: Theme.cardEdge
    edgeColor: Theme.accent
    color: Theme.at(Theme.accent, 0.22)

    Behavior on x {
        enabled: root.gliding
        Spring {
            onRunningChanged: root.gliding = root.gliding && running
        }
    }
    Behavior on width {
        enabled: root.gliding
        Spring {}
    }
}
