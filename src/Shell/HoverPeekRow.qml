import QtQuick
import Velto.Design
import Velto.Shell

// What the strip is about, in one line, while the pointer rests on it.
Item {
    id: root

    required property CollapsedStrip strip
    required property UI ui

    readonly property color tone: {
        switch (root.strip.summaryTone) {
        case CollapsedStrip.Waiting:
            return Theme.amber;
        case CollapsedStrip.Overdue:
            return Theme.coral;
        default:
            return Theme.ice;
        }
    }

    Accessible.role: Accessible.Button
    Accessible.name: Plain.line(root.strip.summaryText)
    Accessible.onPressAction: root.ui.openFocused()

    TapHandler {
        onTapped: root.ui.openFocused()
    }

    Symbol {
        id: symbol

        x: 22
        anchors.verticalCenter: parent.verticalCenter
        name: root.strip.summarySymbol
        size: 12
        color: root.tone
    }
    PlainText {
        anchors.left: symbol.right
        anchors.leftMargin: 9
        anchors.right: open.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        words: root.strip.summaryText
        color: "white"
        size: 11
        Accessible.ignored: true
    }
    PlainText {
        id: open

        anchors.right: parent.right
        anchors.rightMargin: 22
        anchors.verticalCenter: parent.verticalCenter
        topPadding: 3
        bottomPadding: 3
        words: qsTr("Open")
        color: root.tone
        size: 10
        Accessible.ignored: true
    }
}
