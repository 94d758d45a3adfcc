import QtQuick
import Velto.Design

// One fact of the brief, and what can be done about it.
Item {
    id: root

    required property string itemId
    required property string symbol
    required property int tone
    required property string title
    required property string detail
    required property string from
    required property string actionLabel
    required property list<color> tones

    readonly property bool holdsFocus: root.activeFocus || action.activeFocus
    readonly property color color: root.tones[root.tone]

    signal chosen

    implicitHeight: (root.detail === "" ? 40 : 48) * Theme.textScale
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: Plain.line(root.detail === "" ? root.title : root.title + ", " + root.detail)
    Accessible.description: root.from
    Accessible.focusable: true
    Keys.onReturnPressed: root.activate()
    Keys.onEnterPressed: root.activate()

    function activate(): void {
        if (root.actionLabel !== "")
            root.chosen();
    }

    RoundedBox {
        y: 1
        width: parent.width
        height: parent.height - 2
        radius: Theme.radiusRow
        edge: Theme.cardEdge
        edgeColor: "white"
        color: Theme.at("white", hover.lit ? 0.09 : 0.05)
    }
    FocusRing {
        anchors.leftMargin: 0
        anchors.rightMargin: 0
        anchors.topMargin: 1
        anchors.bottomMargin: 1
        corner: Theme.radiusRow - 2
        visible: root.activeFocus
    }
    HoverHandler {
        id: hover

        readonly property bool lit: hovered && !Theme.pointerRests
    }
    Loader {
        readonly property bool wanted: root.from !== "" && (hover.lit || root.activeFocus) && !action.hovered

        onWantedChanged: wanted ? setSource("qrc:/qt/qml/Velto/Design/HelpTip.qml", {"target": root, "text": root.from}) : setSource("")
    }

    RoundedBox {
        x: 10 * Theme.textScale
        anchors.verticalCenter: parent.verticalCenter
        width: 26 * Theme.textScale
        height: width
        radius: width / 2
        color: Theme.at(root.color, 0.14)

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            color: root.color
        }
    }
    Column {
        x: 46 * Theme.textScale
        anchors.verticalCenter: parent.verticalCenter
        width: (action.visible ? action.x : root.width) - x - Theme.gapSection
        spacing: 2

        PlainText {
            width: parent.width
            words: root.title
            size: Theme.textTitle
            weight: Font.Medium
            elide: Text.ElideMiddle // what has happened, or when it will, stands at the end
            Accessible.ignored: true
        }
        PlainText {
            width: parent.width
            visible: root.detail !== ""
            words: root.detail.replace(/`([^`]+)`/g, "$1") // a command, in one face with the rest
            size: Theme.textSmall
            color: Theme.glassTertiary
            Accessible.ignored: true
        }
    }
    PillButton {
        id: action

        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard
        anchors.verticalCenter: parent.verticalCenter
        visible: root.actionLabel !== ""
        text: root.actionLabel
        label: root.actionLabel === "" ? root.title.slice(0, 200) : root.actionLabel + ": " + root.title.slice(0, 200)
        onClicked: root.chosen()
    }
}
