import QtQuick
import Velto.Agents
import Velto.Design

// One session: what it is called, what it does, and the way back to it.
Item {
    id: root

    required property AgentsSource source
    required property UI ui
    required property string agentId
    required property string title
    required property string stateWord
    required property string detail
    required property string age
    required property string folder
    required property bool working
    required property bool canResume
    required property string spoken

    readonly property bool isAgentRow: true
    readonly property bool holdsFocus: root.activeFocus || view.activeFocus || more.activeFocus
    readonly property color tone: root.working ? Theme.mint : Theme.amber
    readonly property string openFolder: qsTr("Open folder")
    readonly property string hideSession: qsTr("Hide session")
    readonly property list<string> entries: root.folder === "" ? (root.working ? [] : [root.hideSession])
                                                               : (root.working ? [root.openFolder] : [root.openFolder, root.hideSession])
    readonly property bool menuOpen: menu.active
    property string chosen
    /// Hidden, until the list reuses the row for another session.
    property bool resting: false

    /// The row is about to go because of what the user chose in it.
    signal leaving

    visible: !root.resting
    implicitHeight: 48 * Theme.textScale
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: Plain.line(root.spoken)
    Accessible.description: root.detail
    Accessible.focusable: true
    Keys.onReturnPressed: root.activate()
    Keys.onEnterPressed: root.activate()
    Keys.onSpacePressed: root.openMenu(true)
    Keys.onMenuPressed: root.openMenu(true)

    // The menu closes before its choice takes effect, since that may remove the row.
    function closeMenu(): void {
        const entry = root.chosen;
        root.chosen = "";
        menu.active = false;
        root.ui.sheetClosed();
        if (entry === root.openFolder)
            root.source.openFolder(root.agentId);
        else if (entry === root.hideSession)
            root.hide();
    }
    function hide(): void {
        root.leaving();
        root.source.dismiss(root.agentId);
    }
    function rest(): void {
        root.chosen = "";
        if (menu.active)
            root.closeMenu();
        root.focus = view.focus = more.focus = false;
        root.resting = true;
    }
    function activate(): void {
        if (root.canResume)
            root.source.resume(root.agentId);
        else
            root.openMenu(true);
    }
    function openMenu(byKeys: bool): void {
        if (root.entries.length === 0 || menu.active)
            return;
        menu.byKeys = byKeys;
        root.ui.sheetOpened();
        menu.active = true;
    }
    Component.onDestruction: {
        if (menu.active)
            root.ui.sheetClosed();
    }

    RoundedBox {
        y: 1
        width: parent.width
        height: parent.height - 2
        radius: Theme.radiusRow
        edge: Theme.cardEdge
        edgeColor: "white"
        color: Theme.at("white", hover.lit || menu.active ? 0.09 : 0.05)
    }
    // Inside the row: the page clips what extends beyond its sides.
    FocusRing {
        anchors.leftMargin: 0
        anchors.rightMargin: 0
        anchors.topMargin: 1
        anchors.bottomMargin: 1
        corner: Theme.radiusRow - 2
    }
    HoverHandler {
        id: hover

        readonly property bool lit: hovered && !Theme.pointerRests
    }

    LiveDot {
        id: dot

        x: 17 * Theme.textScale - width / 2
        anchors.verticalCenter: title.verticalCenter
        // Centred on its capitals, which are rounded down to a device pixel.
        anchors.verticalCenterOffset: 0.5 / Screen.devicePixelRatio - title.anchors.verticalCenterOffset
        diameter: 6 * Theme.textScale
        color: root.tone
        live: root.working
    }

    PlainText {
        id: title

        x: 32 * Theme.textScale
        y: 7 * Theme.textScale
        width: Math.min(implicitWidth, tail.x - x - word.implicitWidth - 3 * Theme.gap)
        words: root.title
        size: Theme.textTitle
        weight: Font.Medium
        Accessible.ignored: true
    }
    PlainText {
        id: word

        anchors.left: title.right
        anchors.leftMargin: Theme.gap
        anchors.baseline: title.baseline
        text: root.stateWord
        size: Theme.textSmall
        weight: Font.Medium
        color: root.tone
        Accessible.ignored: true
    }
    PlainText {
        x: 32 * Theme.textScale
        y: 26 * Theme.textScale
        width: tail.x - x - 2 * Theme.gap
        words: root.detail !== "" ? root.detail : root.folder
        elide: root.detail !== "" ? Text.ElideRight : Text.ElideMiddle
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.ignored: true
    }

    Row {
        id: tail

        anchors.right: parent.right
        anchors.rightMargin: Theme.paddingCard - (more.visible ? more.overhang : 0)
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.gap

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.width >= 440 * Theme.textScale // else the name needs the room
            text: root.age
            size: Theme.textSmall
            color: Theme.glassTertiary
            Accessible.ignored: true
        }
        PillButton {
            id: view

            anchors.verticalCenter: parent.verticalCenter
            visible: root.canResume
            text: qsTr("View session")
            label: qsTr("View session: %1").arg(root.title.slice(0, 200))
            help: hovered || activeFocus ? root.source.terminalName() : ""
            onClicked: root.source.resume(root.agentId)
        }
        IconButton {
            id: more

            anchors.verticalCenter: parent.verticalCenter
            visible: root.entries.length > 0
            symbol: "ellipsis"
            label: qsTr("More: %1").arg(root.title.slice(0, 200))
            help: ""
            onClicked: root.openMenu(activeFocus)
        }
    }

    Loader {
        id: menu

        property bool byKeys

        active: false
        // With Qt 6.4 a Loader can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: PopupMenu {
            target: more
            readonly property bool panelOpen: root.ui.expanded

            entries: root.entries
            byKeys: menu.byKeys
            onPanelOpenChanged: {
                if (!panelOpen)
                    finish();
            }
            onChosen: index => root.chosen = entries[index]
            onClosed: root.closeMenu()
        }
        // qmllint enable unqualified
    }
}
