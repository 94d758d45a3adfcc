import QtQuick
import Velto.Design
import Velto.Shell

// A question on one line: who asks, with what tool, to do what. The parts look different, so that none can pose as another. The
// name gives way first, then what would be done; a tool with a long name gets two lines, and letters as small as it needs.
// Whatever is cut ends in "…".
Item {
    id: root

    required property PeekLine line
    required property bool unfolded

    readonly property int gap: Math.round(4 + 4 * Theme.textScale)
    readonly property int padding: Math.round(3 + 3 * Theme.textScale)
    /// A name takes at most a third of the row around this.
    required property real longestName
    readonly property real leastName: Math.min(name.implicitWidth, Math.round(14 * Theme.textScale))
    readonly property real leastDetail: Math.min(detail.implicitWidth, Math.round(12 * Theme.textScale))
    readonly property real leastPlace: root.line.place === "" ? 0 : root.gap + Math.min(place.implicitWidth, 48 * Theme.textScale)
    readonly property real wholePlace: root.line.place === "" ? 0 : root.gap + place.implicitWidth
    readonly property real room: root.width - chevron.width - 2 * root.gap
    readonly property real roomBeside: root.room - chip.width - root.gap
    /// What a name keeps beside a long command, unless the tool needs the room.
    readonly property real usualName: Math.min(name.implicitWidth, root.room / 5, root.roomBeside - root.leastDetail)
    readonly property real longestTool: root.room - root.leastName - root.leastDetail - root.gap - 2 * root.padding
    /// Beside a longer one, nothing else would be left to read. It is broken in its middle, after a "_" if there is one.
    readonly property bool twoLines: usual.advanceWidth > 0.4 * root.room
    readonly property list<string> toolLines: {
        const whole = root.line.tool;
        const word = whole.lastIndexOf("_", 0.6 * whole.length) + 1;
        const half = word > 0.4 * whole.length ? word : Math.ceil(whole.length / 2);
        const at = /^[\udc00-\udfff]/.test(whole.slice(half)) ? half + 1 : half;
        return [whole.slice(0, at), whole.slice(at)];
    }
    readonly property real longerLine: Math.max(upper.advanceWidth, lower.advanceWidth) + 1
    readonly property int lineSize: Math.floor(upper.font.pixelSize * Math.min(1, 0.95 * root.longestTool / root.longerLine))
    readonly property int leastSize: 8

    /// Stays as it is while the question goes.
    property bool turned

    Binding on turned {
        when: root.line.onShow
        value: root.unfolded
        restoreMode: Binding.RestoreNone
    }

    height: Math.round(22 * Theme.textScale)
    Accessible.ignored: true

    PlainText {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.longestName, Math.max(root.usualName, root.leastName, root.roomBeside - detail.implicitWidth - root.wholePlace))
        text: root.line.session
        color: Theme.glassSecondary
        size: Theme.textBody
        Accessible.ignored: true
    }
    RoundedBox {
        id: chip

        x: name.width > 0 ? name.x + name.width + root.gap : 0
        anchors.verticalCenter: parent.verticalCenter
        visible: tool.text !== ""
        width: visible ? tool.width + 2 * root.padding : 0
        height: root.twoLines ? tool.height + 4 : Math.round(8 + 12 * Theme.textScale)
        radius: 6
        color: Theme.at("white", 0.14)

        PlainText {
            id: tool

            x: root.padding
            anchors.verticalCenter: parent.verticalCenter
            anchors.verticalCenterOffset: root.twoLines ? 0 : Theme.capitalsDrop(font.pixelSize, height)
            // Its own implicit width would follow the size that follows from this width.
            width: Math.min(root.twoLines ? Math.ceil(root.longerLine * Math.min(1, 1.05 * font.pixelSize / upper.font.pixelSize)) : Math.ceil(usual.advanceWidth) + 1, Math.max(40, root.longestTool))
            text: root.twoLines && root.lineSize >= root.leastSize ? root.toolLines[0] + "\n" + root.toolLines[1] : root.line.tool
            color: "white"
            wrapMode: root.twoLines ? Text.WrapAnywhere : Text.NoWrap
            maximumLineCount: root.twoLines ? 2 : 1
            lineHeight: root.twoLines ? 0.95 : 1
            font.pixelSize: root.twoLines ? Math.max(root.leastSize, root.lineSize) : usual.font.pixelSize
            weight: Font.DemiBold
            Accessible.ignored: true

            TextMetrics {
                id: usual

                font.family: tool.font.family
                font.weight: tool.font.weight
                font.pixelSize: Math.round(Theme.textBody * Theme.textScale)
                text: root.line.tool
            }
            TextMetrics {
                id: upper

                font.family: tool.font.family
                font.weight: tool.font.weight
                font.pixelSize: Math.round(2 + 8 * Theme.textScale)
                text: root.toolLines[0]
            }
            TextMetrics {
                id: lower

                font: upper.font
                text: root.toolLines[1]
            }
        }
    }
    PlainText {
        id: detail

        x: chip.visible ? chip.x + chip.width + root.gap : chip.x
        anchors.baseline: name.baseline
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
        anchors.baseline: name.baseline
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
        name: root.turned ? "chevron.up" : "chevron.down"
        size: Theme.textTiny
        color: Theme.glassTertiary
    }
}
