import QtQuick
import QtQuick.Controls.Fusion
import QtQuick.Templates as T
import Velto.Design
import Velto.Settings

/// A window's modal dialog: over its middle, and nothing else can be reached until it is answered.
Dialog {
    id: root

    /// What gets the focus when it opens.
    property Item first: null

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    padding: 20
    topPadding: 0
    bottomPadding: 4
    onOpened: root.first?.forceActiveFocus(Qt.TabFocusReason)

    background: RoundedBox {
        radius: 12
        color: root.palette.window
        edge: 1
        edgeColor: Qt.alpha(root.palette.windowText, 0.2)
    }
    header: Item {
        /// See ItemAccessible.
        readonly property bool trapsFocus: true

        implicitHeight: title.height + 26

        FormHeading {
            id: title

            x: 20
            y: 18
            width: parent.width - 40
            text: root.title
        }
    }
}
