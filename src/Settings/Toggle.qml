import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design

/// A switch that shows the current state and asks for the other one; unless it is granted, the switch goes back.
Switch {
    id: root

    required property string label
    required property bool on

    signal wanted(bool on)

    // A screen reader presses this way; the toolkit would only turn what is shown.
    function ask(): void {
        if (root.enabled)
            root.wanted(!root.on);
    }

    padding: 0
    spacing: 0
    checked: root.on
    Accessible.role: Accessible.CheckBox
    Accessible.name: root.label
    Accessible.checkable: true
    Accessible.checked: root.checked
    Accessible.onPressAction: root.ask()
    Accessible.onToggleAction: root.ask()
    onToggled: {
        const wish = root.checked;
        root.checked = Qt.binding(() => root.on);
        root.wanted(wish);
    }

    indicator: SwitchMark {
        readonly property real growth: Math.max(1, root.font.pixelSize / 13)

        implicitWidth: Math.round(38 * growth)
        implicitHeight: Math.round(22 * growth)
        x: root.leftPadding
        y: (root.height - height) / 2
        place: root.checked ? 1 : 0
        stretch: root.down ? 2 : 0
        track: root.checked ? root.palette.highlight : Qt.alpha(root.palette.windowText, Theme.highContrast ? 0.6 : root.hovered ? 0.55 : 0.45)

        Behavior on track {
            ColorAnimation {
                duration: Theme.fadeDuration
            }
        }
        Behavior on place {
            NumberAnimation {
                duration: Theme.fadeDuration
                easing.type: Easing.OutQuad
            }
        }
        RoundedBox {
            anchors.fill: parent
            anchors.margins: -3
            visible: root.visualFocus
            radius: height / 2
            edge: 2
            edgeColor: root.palette.highlight
        }
    }
}
