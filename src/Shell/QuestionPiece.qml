import QtQuick
import Velto.Design

// A few lines of a question: a field with its name beside it, or a part of what would be run or written. It can be selected and copied.
Item {
    id: root

    required property string label
    required property string words
    required property int look
    required property bool beside
    required property bool continued
    required property bool begins
    required property bool ends

    /// Whether a press into the text asks for the keyboard.
    property bool takesKeyboard: false

    readonly property bool plain: root.look === 0
    readonly property bool removed: root.look === 2
    readonly property bool added: root.look === 3
    readonly property bool inBlock: !root.beside && !root.plain
    readonly property real column: root.beside ? Math.round(92 * Theme.textScale) : 0
    readonly property real gutter: root.inBlock ? Math.round(6 + 12 * Theme.textScale) : 0
    readonly property real padding: root.inBlock ? 7 : 0
    readonly property real above: root.beside || root.label === "" ? 0 : top.implicitHeight + 5
    /// Stands before each line of a difference.
    readonly property string mark: root.removed ? "−" : root.added ? "+" : ""
    readonly property color tint: root.removed ? Theme.coral : root.added ? Theme.mint : "transparent"

    implicitHeight: block.y + block.height + (root.ends ? 9 : 0)

    PlainText {
        id: top

        y: root.beside ? body.y + body.baselineOffset - baselineOffset : 0
        width: root.beside ? root.column - 10 : root.width
        visible: root.label !== ""
        text: root.label
        color: Theme.glassTertiary
        size: Theme.textSmall
        Accessible.ignored: true
    }
    // Rounded where the block begins and ends.
    Item {
        id: block

        y: root.above
        width: root.width
        height: body.y + body.implicitHeight + (root.ends ? root.padding : 0) - y
        clip: true

        RoundedBox {
            readonly property real over: root.begins ? 0 : radius
            readonly property real under: root.ends ? 0 : radius

            y: -over
            width: parent.width
            height: parent.height + over + under
            radius: Theme.radiusControl
            visible: root.inBlock
            color: root.removed || root.added ? Theme.at(root.tint, 0.15) : Theme.at("white", 0.06)
        }
    }
    // Beside the text, so that it isn't copied with it.
    TextEdit {
        id: marks

        x: 6
        y: body.y
        readOnly: true
        enabled: false
        visible: root.mark !== ""
        text: visible ? lines.marks(root.mark, body.lineCount, body.width) : ""
        textFormat: TextEdit.PlainText
        color: root.tint
        renderType: Text.NativeRendering
        font: body.font
        Accessible.ignored: true
        onTextChanged: markLines.apply()

        HangingIndent {
            id: markLines

            document: marks.textDocument
            leading: lines.leading
        }
    }
    TextEdit {
        id: body

        x: root.column + root.gutter
        y: root.above + (root.begins ? root.padding : 0)
        width: root.width - x - (root.inBlock ? 10 : 0)
        readOnly: true
        selectByMouse: true
        persistentSelection: true
        activeFocusOnPress: root.takesKeyboard
        text: root.words
        textFormat: TextEdit.PlainText
        horizontalAlignment: TextEdit.AlignLeft
        wrapMode: TextEdit.Wrap
        tabStopDistance: 4 * letter.advanceWidth
        color: root.plain ? Theme.glassPrimary : Theme.at("white", 0.92)
        selectionColor: Theme.at(Theme.ice, 0.35)
        selectedTextColor: "white"
        renderType: Text.NativeRendering
        font.family: root.plain ? Theme.family : Theme.fixedFamily
        font.pixelSize: Math.round(Theme.textSmall * Theme.textScale)
        font.weight: Font.Normal
        // As loose texts, all but the short ones would be read out when a screen reader comes near; they have been announced.
        Accessible.role: Accessible.ListItem
        Accessible.name: (root.label === "" ? "" : root.label + ": ") + (root.removed ? qsTr("Removed: %1").arg(root.words) : root.added ? qsTr("Added: %1").arg(root.words) : root.words)
        onTextChanged: lines.apply()
        Component.onCompleted: lines.apply()

        TextMetrics {
            id: letter

            font: body.font
            text: "0"
        }
        HangingIndent {
            id: lines

            document: body.textDocument
            indent: root.plain ? 0 : 14
            leading: 2
            continued: root.continued
        }
    }
}
