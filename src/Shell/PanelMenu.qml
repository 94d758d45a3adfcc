import QtQuick
import Velto.Design

// The program's menu: under the strip, in the black, which makes room for it; or in the open panel, where it was asked for.
FocusScope {
    id: root

    required property UI ui
    /// Where the pointer asked for it; null opens it under the strip's row or at the panel's buttons.
    required property var place

    readonly property bool open: root.ui.menuOpen
    readonly property bool byKeys: root.place === null
    readonly property bool hangs: root.open && !root.ui.expanded
    /// See TabOrder.
    readonly property bool trapsFocus: root.hangs

    onOpenChanged: {
        if (!root.open)
            return;
        if (root.ui.expanded)
            popup.active = true;
        else
            hanging.active = true;
    }
    Keys.onPressed: event => event.accepted = root.open && root.ui.pressMenuKey(event.key, event.modifiers)

    // Under the strip's row, which it slides out of.
    Item {
        anchors.fill: parent
        anchors.topMargin: root.ui.velto.height
        clip: root.hangs

        Loader {
            id: hanging

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 10
            width: Math.min(parent.width - 24, 248)
            active: false
            visible: root.hangs
            focus: root.hangs
            // With Qt 6.4 a Loader can't create a bound component.
            // qmllint disable unqualified
            sourceComponent: MenuEntries {
                entries: root.ui.menuTitles
                keys: root.ui.menuKeys
                Accessible.role: Accessible.PopupMenu
                Accessible.name: qsTr("Menu")
                onDismissed: root.ui.closeMenu()
                onChosen: index => root.ui.chooseFromMenu(index)
                onVisibleChanged: {
                    if (visible)
                        enter(root.byKeys);
                }
                Component.onCompleted: {
                    root.ui.menuHeight = implicitHeight + 16;
                    enter(root.byKeys);
                }
            }
            // qmllint enable unqualified
            onVisibleChanged: {
                const entries = item as MenuEntries;
                if (visible && entries)
                    root.ui.menuHeight = entries.implicitHeight + 16;
            }
        }
    }

    Loader {
        id: popup

        active: false
        // qmllint disable unqualified
        sourceComponent: PopupMenu {
            readonly property bool wanted: root.open && root.ui.expanded

            target: root
            byKeys: root.byKeys
            place: root.place ?? Qt.point(root.width - 200, 44)
            entries: root.ui.menuTitles
            keys: root.ui.menuKeys
            Keys.onPressed: event => event.accepted = root.ui.pressMenuKey(event.key, event.modifiers)
            onWantedChanged: {
                if (!wanted)
                    finish();
            }
            // The menu is gone before its choice takes effect.
            onChosen: index => Qt.callLater(root.ui.chooseFromMenu, index)
            onClosed: {
                root.ui.closeMenu();
                popup.active = false;
            }
        }
        // qmllint enable unqualified
    }
}
