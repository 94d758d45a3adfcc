import QtQuick
import Velto.Design

/// A help text above everything else in the window, below `target`, or over it where there is no room below. It appears after a
/// delay and needs no window of its own. Created on demand; see ButtonBase.
RoundedBox {
    id: root

    required property Item target
    required property string text

    /// A little more than the distance of the panel's black from the window's sides.
    readonly property int side: 18
    /// Set once: a binding would move this item out of a window that is being destroyed.
    property Item scene: null
    readonly property point below: root.scene
        ? root.target.mapToItem(root.scene, root.target.width / 2 - root.width / 2, root.target.height + 6) : Qt.point(0, 0)
    readonly property bool flipped: root.scene !== null && root.below.y + root.height > root.scene.height - 4

    Component.onCompleted: root.scene = root.target.Window.contentItem

    parent: root.scene
    x: root.scene ? Math.round(Math.max(root.side, Math.min(root.below.x, root.scene.width - root.width - root.side))) : 0
    y: Math.round(root.flipped ? root.below.y - root.target.height - root.height - 12 : root.below.y)
    z: 1000
    width: Math.min(words.implicitWidth, 320 * Theme.textScale, (root.scene?.width ?? 0) - 2 * root.side - 16) + 16
    height: words.height + 8
    radius: 6
    color: Theme.popover
    edge: 1
    edgeColor: Theme.at("white", 0.14)
    opacity: 0

    PlainText {
        id: words

        x: 8
        y: 4
        width: parent.width - 16
        multiline: true
        words: root.text
        size: Theme.textSmall
        Accessible.ignored: true
    }

    SequentialAnimation {
        running: true

        PauseAnimation {
            duration: Theme.helpDelay
        }
        NumberAnimation {
            target: root
            property: "opacity"
            to: 1
            duration: Theme.fadeDuration
        }
    }
}
