import QtQuick
import Velto.Design
import Velto.Shell

// Everything in the window. The black hangs from its top centre and moves towards the outline.
Item {
    id: root

    required property UI ui
    required property CollapsedStrip strip
    required property PeekLine peekLine
    required property PanelOutline outline
    required property PanelContents contents
    required property DesktopAccessibility accessibility

    // A strip that appears stands as it is meant to.
    readonly property bool moves: root.ui.composited && !Theme.reducedMotion && Window.visibility !== Window.Hidden

    VeltoShape {
        id: shape

        anchors.horizontalCenter: parent.horizontalCenter
        width: root.outline.width
        height: root.outline.height
        topRadius: root.outline.top
        bottomRadius: root.outline.bottom
        openness: root.ui.expanded ? 1 : 0
        edge: Theme.highContrast ? 1.5 : 0

        Behavior on width {
            enabled: root.moves
            Spring {}
        }
        Behavior on height {
            enabled: root.moves
            Spring {}
        }
        Behavior on topRadius {
            enabled: root.moves
            Spring {}
        }
        Behavior on bottomRadius {
            enabled: root.moves
            Spring {}
        }
        Behavior on openness {
            enabled: root.moves
            Spring {}
        }
    }

    // What the black doesn't cover isn't shown.
    CentredClip {
        roomWidth: shape.width - 2 * shape.topRadius
        roomHeight: shape.height

        CollapsedView {
            width: root.width
            height: root.height
            visible: opacity > 0
            opacity: 1 - shape.openness
            enabled: !root.ui.expanded
            ui: root.ui
            strip: root.strip
            peekLine: root.peekLine
            outline: root.outline
        }

        // The first opening builds the panel; afterwards it stays hidden and costs nothing. By its file's name, since the types of a
        // component in this file would be loaded with it, before the strip is drawn.
        Loader {
            id: panel

            readonly property bool wanted: root.ui.expanded

            function build(): void {
                if (wanted && status === Loader.Null)
                    setSource("ExpandedView.qml", {
                        ui: root.ui,
                        contents: root.contents,
                        peekLine: root.peekLine
                    });
            }

            x: (root.width - width) / 2
            width: root.outline.openWidth
            height: root.outline.openHeight
            visible: shape.openness > 0
            opacity: shape.openness
            // While it moves it is a picture: text that fades is painted anew in each frame, and far slower than opaque text.
            // Enlarged by the display, the software scene graph leaves such a picture empty.
            layer.enabled: shape.openness > 0 && shape.openness < 1 && Screen.devicePixelRatio === 1
            enabled: root.ui.expanded
            onWantedChanged: build()
            Component.onCompleted: build()
        }
    }

    // The clip above is rectangular; this cuts its round corners.
    CornerCut {
        anchors.fill: shape
        topRadius: shape.topRadius
        bottomRadius: shape.bottomRadius
    }

    HoverHandler {
        onHoveredChanged: root.ui.pointerChanged(hovered)
    }

    // The menu is here for desktops without a tray.
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: point => {
            menu.place = point.position;
            root.ui.askForMenu();
        }
    }
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Menu && !(event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier))
            return;
        event.accepted = true;
        menu.place = null;
        root.ui.askForMenu();
    }
    PanelMenu {
        id: menu

        anchors.fill: shape
        ui: root.ui
        place: null
    }

    // Screen readers speak the name of a notification that comes into view; Orca skips alerts, and names that change.
    Item {
        id: announcement

        function silence(): void {
            announcement.visible = false;
            said.text = "";
        }

        visible: false
        Accessible.role: Accessible.Notification
        Accessible.name: said.text
        Accessible.ignored: said.text === "" // what isn't in the tree yet can't come into view

        Connections {
            target: root.accessibility
            // Hidden first: a notification that is visible already doesn't come into view.
            function onAnnouncementRequested(text: string): void {
                announcement.visible = false;
                said.text = Plain.line(text);
                said.restart();
            }
        }
        Timer {
            id: said

            property string text

            interval: 0
            onTriggered: {
                announcement.visible = true;
                if (!root.peekLine.onShow)
                    heard.restart();
            }
        }
        // The text on show stays readable as long as it is shown; any other only until it was spoken.
        Timer {
            id: heard

            interval: 5000
            onTriggered: announcement.silence()
        }
        // What was answered or withdrawn must not stay readable.
        Connections {
            target: root.peekLine
            function onChanged(): void {
                heard.stop();
                if (!root.peekLine.onShow)
                    announcement.silence();
            }
        }
    }
}
