import QtQuick
import Velto.Design

/// A check box with its label. Space and a press ask for the other state; the owner grants it.
ButtonBase {
    id: root

    required property string text
    property bool checked: false

    signal toggled(bool checked)

    label: root.text
    takesReturn: false
    corner: 6
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

    RoundedBox {
        id: box

        anchors.verticalCenter: parent.verticalCenter
        x: 2
        width: Math.round(16 * Theme.textScale)
        height: width
        radius: 5 * Theme.textScale
        color: root.checked ? Theme.at(Theme.ice, root.pressed ? 0.7 : root.hovered ? 0.95 : 0.85)
                            : Theme.at("white", root.pressed ? 0.16 : root.hovered ? 0.12 : 0.07)
        edge: root.checked ? 0 : 1
        edgeColor: Theme.at("white", 0.3)

        Symbol {
            anchors.centerIn: parent
            visible: root.checked
            name: "checkmark"
            size: 9
            color: Theme.popover
        }
    }
    PlainText {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        x: box.x + box.width + 7
        words: root.text
        Accessible.ignored: true
    }
}
