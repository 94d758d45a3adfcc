import QtQuick
import Velto.Design

/// One line about what has just happened, with at most one action. Screen readers announce it when it appears.
RoundedBox {
    id: root

    required property string symbol
    required property string text
    property color tint: Theme.ice
    property string action
    property int mostLines: 3

    signal clicked

    implicitHeight: Math.max(Math.round(32 * Theme.textScale), words.height + Theme.gapSection)
    radius: Theme.radiusRow
    edge: Theme.cardEdge
    edgeColor: "white"
    color: Theme.at(root.tint, 0.1)
    Accessible.role: Accessible.Notification
    Accessible.name: root.text

    onVisibleChanged: {
        if (root.visible)
            coming.restart();
    }
    NumberAnimation {
        id: coming

        target: root
        property: "opacity"
        from: 0
        to: 1
        duration: Theme.fadeDuration * 2
    }

    Symbol {
        id: mark

        x: Math.round(10 * Theme.textScale)
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: root.tint
    }
    PlainText {
        id: words

        anchors.left: mark.right
        anchors.leftMargin: Theme.gap
        anchors.right: button.visible ? button.left : parent.right
        anchors.rightMargin: Theme.paddingCard
        anchors.verticalCenter: parent.verticalCenter
        multiline: true
        maximumLineCount: root.mostLines
        elide: Text.ElideRight
        words: root.text
        Accessible.ignored: true
    }
    PillButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard
        anchors.verticalCenter: parent.verticalCenter
        visible: root.action !== ""
        text: root.action
        tint: root.tint
        onClicked: root.clicked()
    }
}
