import QtQuick
import Velto.Design
import Velto.Shell

// A symbol and a short text beside the housing, such as a countdown.
StripItem {
    id: root

    required property string symbol
    property string text

    // With Qt 6.4 a Loader can't create a bound component.
    // qmllint disable unqualified
    sourceComponent: Row {
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: width + parent.spacing + words.width <= root.room
            name: root.symbol
            size: 11
            grows: false
            color: "white"
        }
        Digits {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            value: root.text
            grows: false
            size: 11
            color: "white"
        }
    }
    // qmllint enable unqualified
}
