import QtQuick
import Velto.Design
import Velto.Home

// The day in a line, the session that matters most, and below it what needs the user, what comes next and the rest.
FocusScope {
    id: root

    required property HomeSource source
    required property UI ui
    readonly property bool takesArrows: true

    readonly property list<color> tones: [Theme.coral, Theme.amber, Theme.ice, Theme.glassTertiary]

    // The page follows the focus.
    function follow(item: Item): void {
        let inside = false;
        for (let at = item; at && !inside; at = at.parent)
            inside = at === page.contentItem;
        if (!inside)
            return;
        const place = item.mapToItem(page.contentItem, 0, 0).y;
        if (place - 8 < page.contentY)
            page.contentY = place < 64 ? 0 : place - 8; // near the top, the headline shows too
        else if (place + item.height + 32 > page.contentY + page.height)
            page.contentY = Math.min(place + item.height + 32 - page.height, page.contentHeight + page.bottomMargin - page.height);
    }
    function rows(): var {
        const found = [];
        for (let i = 0; i < groups.children.length; ++i) {
            const group = groups.children[i] as BriefGroup;
            for (let j = 0; group && j < group.count; ++j)
                found.push(group.rowAt(j));
        }
        return found;
    }
    function moveRow(step: int): void {
        const rows = root.rows();
        const now = rows.findIndex(row => row.holdsFocus);
        const next = now < 0 ? rows[0] : rows[now + step];
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason);
    }
    Keys.onDownPressed: root.moveRow(1)
    Keys.onUpPressed: root.moveRow(-1)

    Connections {
        target: root.source // qmllint disable type
        function onRowWanted(itemId: string): void {
            root.rows().find(row => row.itemId === itemId)?.forceActiveFocus(Qt.TabFocusReason);
        }
    }
    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            root.follow(root.Window.window.activeFocusItem);
        }
    }

    Flickable {
        id: page

        anchors.fill: parent
        contentWidth: width
        contentHeight: column.height
        bottomMargin: 28
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: column

            width: page.width
            spacing: Theme.gapSection

            Column {
                width: parent.width
                spacing: 2
                // A screen reader that enters the page reads out its texts, but no heading.
                Accessible.role: Accessible.StaticText
                Accessible.name: root.source.greeting + " " + root.source.headlineText

                PlainText {
                    text: root.source.greeting
                    size: Theme.textTitle
                    color: Theme.glassSecondary
                    Accessible.ignored: true
                }
                PlainText {
                    text: root.source.headlineText
                    size: Theme.textHeadline
                    weight: Font.DemiBold
                    color: root.source.headlineTone === HomeSource.Off ? Theme.glassSecondary : root.tones[root.source.headlineTone]
                    Accessible.ignored: true
                }
            }

            HomeAgentSpotlight {
                width: parent.width
                visible: root.source.spotlight.present
                spotlight: root.source.spotlight
            }
            GlanceGuide {
                width: parent.width
                visible: root.source.guideShown
                onUseCopiedLink: root.source.useCopiedLink()
                onDismissed: root.source.dismissGuide()
            }

            Column {
                id: groups

                width: parent.width
                spacing: Theme.gapSection

                BriefGroup {
                    width: parent.width
                    heading: qsTr("Needs you")
                    model: root.source.needs
                    tones: root.tones
                    onChosen: id => root.source.run(id)
                }
                BriefGroup {
                    width: parent.width
                    heading: qsTr("Up next")
                    model: root.source.next
                    tones: root.tones
                    onChosen: id => root.source.run(id)
                }
                BriefGroup {
                    width: parent.width
                    heading: qsTr("Today")
                    model: root.source.today
                    tones: root.tones
                    onChosen: id => root.source.run(id)
                }
            }

            Item {
                width: parent.width
                implicitHeight: 28 * Theme.textScale
                visible: root.source.setupText !== ""

                PlainText {
                    anchors.left: parent.left
                    anchors.right: connect.left
                    anchors.rightMargin: 12
                    anchors.verticalCenter: parent.verticalCenter
                    words: root.source.setupText
                    size: Theme.textSmall
                    color: Theme.glassTertiary
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                PillButton {
                    id: connect

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Connect")
                    onClicked: root.source.openConnect()
                }
            }
        }
    }
    // Over the rows, so that none of them moves away from under the pointer.
    RoundedBox {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        height: notice.height
        visible: root.source.noticeText !== ""
        radius: notice.radius
        color: Theme.sheet

        NoticeBar {
            id: notice

            width: parent.width
            symbol: "play.rectangle"
            text: root.source.noticeText
        }
    }
    ScrollFade {
        area: page
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: -9
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 28
        area: page
    }

    Loader {
        id: video

        active: root.source.videoShown && root.ui.expanded
        // With Qt 6.4 a Loader can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: VideoPreviewSheet {
            target: root
            source: root.source
            Component.onCompleted: root.ui.sheetOpened()
            Component.onDestruction: root.ui.sheetClosed()
            onDone: root.source.closeVideo()
            onKeyboardWanted: root.ui.askForKeyboard()
        }
        // qmllint enable unqualified
    }
}
