import QtQuick
import Velto.Design

/// A switch, with what it switches. Space and a press ask for the other state; the owner grants it.
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
    Accessible.onToggleAction: root.clicked()
    onClicked: root.toggled(!root.checked)

    Rectangle {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        x: 2
        width: 30
        height: 18
        radius: 9
        color: root.checked ? Theme.at(Theme.ice, root.hovered ? 0.95 : 0.85) : Theme.at("white", root.hovered ? 0.24 : 0.18)

        Behavior on color {
            ColorAnimation {
                duration: Theme.fadeDuration
            }
        }
        Rectangle {
            x: root.checked ? parent.width - width - 2 : 2
            y: 2
            width: root.pressed ? 16 : 14
            height: 14
            radius: 7
            color: "white"

            Behavior on x {
                NumberAnimation {
                    duration: Theme.fadeDuration
                    easing.type: Easing.OutQuad
                }
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
