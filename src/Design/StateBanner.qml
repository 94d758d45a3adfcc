import QtQuick
import Velto.Design

/// A feed's state in words: nothing while it is ready, otherwise that it loads, why it can't, or what went wrong, with the
/// button that helps.
Item {
    id: root

    /// A SourceState. The linter of Qt 6.4 knows no value types of ours, hence no type.
    required property var feed
    /// Whether a failed feed offers another try.
    property bool retryable: false

    readonly property real padding: root.loading ? 0 : Theme.paddingCard

    readonly property bool loading: root.feed.kind === SourceState.Loading
    readonly property bool failed: root.feed.kind === SourceState.Failed
    readonly property bool unavailable: root.feed.kind === SourceState.Unavailable

    signal settingsWanted
    signal retryWanted

    visible: root.loading || root.failed || root.unavailable
    implicitHeight: root.visible ? Math.max(mark.height, words.height, button.visible ? button.height : 0) + 2 * root.padding : 0
    Accessible.role: Accessible.StatusBar
    Accessible.name: Plain.lines(reason.words) + (fix.visible ? " " + Plain.lines(fix.words) : "")

    RoundedBox {
        anchors.fill: parent
        visible: !root.loading
        radius: Theme.radiusCard
        edge: Theme.cardEdge
        edgeColor: "white"
        color: Theme.at(root.failed ? Theme.amber : "white", 0.08)
    }

    Item {
        id: mark

        x: root.padding
        y: words.y + Math.round((Math.min(words.height, reason.height) - height) / 2)
        width: Math.round(19 * Theme.textScale)
        height: width

        Spinner {
            anchors.centerIn: parent
            visible: root.loading
        }
        Symbol {
            anchors.centerIn: parent
            visible: !root.loading
            name: root.failed ? "exclamationmark.triangle" : "info.circle"
            size: Theme.textLarge
            color: root.failed ? Theme.amber : Theme.ice
        }
    }

    Column {
        id: words

        anchors.left: mark.right
        anchors.leftMargin: Theme.gap
        anchors.right: button.visible ? button.left : parent.right
        anchors.rightMargin: button.visible ? Theme.gapSection : root.padding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        CodeText {
            id: reason

            width: parent.width
            words: root.loading ? qsTr("Loading…") : root.failed ? root.feed.message : root.feed.reason
            color: root.loading ? Theme.glassSecondary : Theme.glassPrimary
            Accessible.ignored: true
        }
        CodeText {
            id: fix

            width: parent.width
            visible: root.unavailable && root.feed.fix !== ""
            words: root.feed.fix
            color: Theme.glassSecondary
            Accessible.ignored: true
        }
    }

    PillButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: root.padding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.unavailable || (root.failed && root.retryable)
        text: root.unavailable ? qsTr("Settings…") : qsTr("Try again")
        tint: root.failed ? Theme.amber : Theme.ice
        onClicked: root.unavailable ? root.settingsWanted() : root.retryWanted()
    }
}
