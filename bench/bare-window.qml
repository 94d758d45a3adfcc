import QtQuick

Window {
    width: 289
    height: 32
    x: (Screen.width - width) / 2
    y: 0
    visible: true
    flags: Qt.FramelessWindowHint | Qt.BypassWindowManagerHint
    color: "transparent"
    title: "Bare window"

    Rectangle {
        anchors.fill: parent
        color: "black"

        Text {
            anchors.centerIn: parent
            color: "white"
            font.pixelSize: 11
            text: "12"
        }
    }
}
