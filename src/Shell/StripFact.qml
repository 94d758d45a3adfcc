import QtQuick
import Velto.Design

// A symbol and a short text beside the housing, such as a countdown.
Row {
    id: root

    required property string symbol
    required property string text

    spacing: 5

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        size: 11
        grows: false
        color: "white"
    }
    Digits {
        anchors.verticalCenter: parent.verticalCenter
        value: root.text
        grows: false
        size: 11
        color: "white"
    }
}
