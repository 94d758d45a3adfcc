import QtQuick
import Velto.Design
import Velto.Shell

// A question on one line: who asks, with what tool, to do what. The parts look different, so that none can pose as another. The
// name gives way first, then what would be done; the tool gets letters as small as it needs, and is cut only where even those
// would fill the whole row. Whatever is cut ends in "…".
Item {
    id: root

    required property PeekLine line
    required property bool unfolded

    readonly property int gap: 8
    /// A name takes at most a third of the row around this.
    required property real longestName
    readonly property real leastName: Math.min(name.implicitWidth, Math.round(14 * Theme.textScale))
    readonly property real leastDetail: Math.min(detail.implicitWidth, Math.round(12 * Theme.textScale))
    readonly property real leastPlace: root.line.place === "" ? 0 : root.gap + Math.min(place.implicitWidth, 48 * Theme.textScale)
    readonly property real room: root.width - chevron.width - 2 * root.gap
    readonly property real roomBeside: root.room - chip.width - root.gap
    /// What a name keeps beside a long command, unless the tool needs the room.
    readonly property real usualName: Math.min(name.implicitWidth, root.room / 5, root.roomBeside - root.leastDetail)
    readonly property real longestTool: root.room - root.leastName - root.leastDetail - root.gap - 12

    height: Math.round(22 * Theme.textScale)
    Accessible.ignored: true

    PlainText {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.longestName, Math.max(root.usualName, root.leastName, root.roomBeside - detail.implicitWidth))
        text: root.line.session
        color: Theme.glassSecondary
        size: Theme.textBody
        Accessible.ignored: true
    }
    Rectangle {
        id: chip

        x: name.width > 0 ? name.x + name.width + root.gap : 0
        anchors.verticalCenter: parent.verticalCenter
        visible: tool.text !== ""
        width: visible ? tool.width + 12 : 0
        height: Math.round(8 + 12 * Theme.textScale)
        radius: 6
        color: Theme.at("white", 0.14)

        PlainText {
            id: tool

            x: 6
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, Math.max(40, root.longestTool))
            text: root.line.tool
            color: "white"
            font.pixelSize: Math.max(9, Math.floor(usual.font.pixelSize * Math.min(1, (root.longestTool - 1) / usual.advanceWidth)))
            weight: Font.DemiBold
            Accessible.ignored: true

            TextMetrics {
                id: usual

                font.family: tool.font.family
                font.weight: tool.font.weight
                font.pixelSize: Math.round(Theme.textBody * Theme.textScale)
                text: tool.text
            }
        }
    }
    PlainText {
        id: detail

        x: chip.visible ? chip.x + chip.width + root.gap : chip.x
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, Math.max(0, root.width - x - chevron.width - root.gap - root.leastPlace))
        text: root.line.detail
        color: root.line.hasDetail ? "white" : Theme.glassTertiary
        size: Theme.textBody
        font.family: root.line.exact && root.line.hasDetail ? Theme.fixedFamily : Theme.family
        font.italic: !root.line.hasDetail
        Accessible.ignored: true
    }
    PlainText {
        id: place

        x: detail.x + detail.width + root.gap
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(0, Math.min(implicitWidth, root.width - x - chevron.width - root.gap))
        visible: root.line.place !== ""
        text: root.line.place
        color: Theme.glassTertiary
        size: Theme.textSmall
        font.family: Theme.fixedFamily
        Accessible.ignored: true
    }
    // There is more than the row can show.
    Symbol {
        id: chevron

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        name: root.unfolded ? "chevron.up" : "chevron.down"
        size: Theme.textTiny
        color: Theme.glassTertiary
    }
}
