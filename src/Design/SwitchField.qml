import QtQuick
import Velto.Design

/// A switch with its label. Space and a press ask for the other state; the owner grants it.
ButtonBase {
    id: root

    required property string text
    property bool checked: false

    signal toggled(bool checked)

    label: root.text
    takesReturn: false
    corner: 10
    implicitWidth: words.x + words.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: root.checked
    Accessible.onToggleAction: {
        if (root.enabled)
            root.clicked();
    }
    onClicked: root.toggled(!root.checked)

    SwitchMark {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        x: 2
        width: Math.round(30 * Theme.textScale)
        height: Math.round(18 * Theme.textScale)
        place: root.checked ? 1 : 0
        stretch: root.pressed ? 2 : 0
        track: root.checked ? Theme.at(Theme.ice, root.hovered ? 0.95 : 0.85) : Theme.at("white", Theme.highContrast ? 0.6 : root.hovered ? 0.24 : 0.18)

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
    }
    PlainText {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        x: track.x + track.width + 8
        words: root.text
        Accessible.ignored: true
    }
}
