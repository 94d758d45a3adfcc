import QtQuick
import Velto.Design

/// What all controls that can be pressed share: pointer, Space and Return, a role and a name, the focus ring, the help text. A
/// click doesn't take the focus, so only those who navigate by keys see the ring.
Item {
    id: root

    /// What a screen reader says.
    required property string label
    property string help
    property real corner: Theme.radiusControl
    /// Whether Return presses it. If not, Return is left to what is around it, such as a form's default button.
    property bool takesReturn: true
    /// See ItemAccessible.
    readonly property bool pressable: true
    /// Off where something else shows the focus.
    property bool ringed: true
    /// Whether it can be pressed. It fades if not; but not in a panel that closes, which disables everything.
    property bool available: true
    property bool hovered: hover.hovered && root.enabled && !Theme.pointerRests
    property bool pressed: (tap.pressed || keys.held) && root.enabled

    signal clicked
    /// The pointer clicks it; `clicked` follows.
    signal tapped
    /// A press began that may become a click.
    signal pressBegan

    activeFocusOnTab: true
    enabled: root.available
    opacity: root.available ? 1 : 0.4
    Accessible.role: Accessible.Button
    Accessible.name: Plain.line(root.label)
    Accessible.description: root.help === root.label ? "" : root.help
    Accessible.focusable: true
    Accessible.ignored: !root.visible
    Accessible.onPressAction: {
        if (root.enabled)
            keys.click();
    }
    Keys.onPressed: event => keys.press(event)
    Keys.onReleased: event => keys.release(event)
    onActiveFocusChanged: keys.held = false

    QtObject {
        id: keys

        property bool held: false

        function press(event: KeyEvent): void {
            if (event.modifiers & ~Qt.KeypadModifier)
                return;
            if (event.key === Qt.Key_Space) {
                keys.held = true;
                root.pressBegan();
                event.accepted = true;
            } else if (root.takesReturn && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !event.isAutoRepeat) {
                event.accepted = true;
                keys.click();
            }
        }
        function click(): void {
            root.pressBegan();
            root.clicked();
        }
        function release(event: KeyEvent): void {
            if (event.key !== Qt.Key_Space || event.isAutoRepeat || !keys.held)
                return;
            keys.held = false;
            event.accepted = true;
            root.clicked();
        }
    }

    HoverHandler {
        id: hover
    }

    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        longPressThreshold: 3600 // a slow press is a press
        onPressedChanged: {
            if (pressed)
                root.pressBegan();
        }
        onTapped: {
            root.tapped();
            root.clicked();
        }
    }

    FocusRing {
        corner: root.corner
        visible: root.ringed && root.activeFocus
        z: 1
    }

    Loader {
        readonly property bool wanted: root.help !== "" && (root.hovered || root.activeFocus) && !root.pressed

        onWantedChanged: wanted ? setSource("HelpTip.qml", {"target": root, "text": root.help}) : setSource("")
    }
}
