import QtQuick
import Velto.Design
import Velto.Shell

// A few lines of the whole question: plain text that one can select. What goes and what comes stands on a band of its colour.
Item {
    id: root

    required property string label
    required property string words
    required property int look
    required property bool beside
    required property bool continued
    required property bool ends

    /// A press into the text takes the keyboard.
    property bool takesKeyboard: false

    readonly property bool plain: root.look === 0
    readonly property bool removed: root.look === 2
    readonly property bool added: root.look === 3
    readonly property real column: root.beside ? 92 : 0
    readonly property real gutter: root.beside ? 0 : 14
    readonly property color tint: root.removed ? Theme.coral : root.added ? Theme.mint : "transparent"

    readonly property real above: root.beside || root.label === "" ? 0 : top.implicitHeight + 4

    implicitHeight: root.above + body.implicitHeight + (root.ends ? 8 : 0)

    PlainText {
        id: top

        width: root.beside ? root.column - 10 : root.width
        visible: root.label !== ""
        text: root.label
        color: Theme.glassTertiary
        size: Theme.textSmall
        Accessible.ignored: true
    }
    Rectangle {
        anchors.fill: body
        anchors.leftMargin: -root.gutter
        visible: !root.beside
        color: root.removed || root.added ? Theme.at(root.tint, 0.12) : Theme.at("white", root.plain ? 0 : 0.05)
    }
    PlainText {
        x: 4
        y: body.y
        visible: root.removed || root.added
        text: root.removed ? "−" : "+"
        color: root.tint
        size: Theme.textSmall
        font.family: Theme.fixedFamily
        Accessible.ignored: true
    }
    TextEdit {
        id: body

        x: root.column + root.gutter
        y: root.above
        width: root.width - x
        readOnly: true
        selectByMouse: true
        persistentSelection: true
        activeFocusOnPress: root.takesKeyboard
        text: root.words
        textFormat: TextEdit.PlainText
        horizontalAlignment: TextEdit.AlignLeft
        wrapMode: root.plain ? TextEdit.Wrap : TextEdit.WrapAnywhere
        color: root.plain ? Theme.glassPrimary : Theme.at("white", 0.92)
        selectionColor: Theme.at(Theme.ice, 0.35)
        selectedTextColor: "white"
        renderType: Text.NativeRendering
        font.family: root.plain ? Theme.family : Theme.fixedFamily
        font.pixelSize: Theme.textSmall
        font.weight: Font.Normal
        Accessible.role: Accessible.StaticText
        Accessible.name: (root.label === "" ? "" : root.label + ": ") + (root.removed ? "− " : root.added ? "+ " : "") + root.words
        onTextChanged: indent.apply()
        Component.onCompleted: indent.apply()

        HangingIndent {
            id: indent

            document: body.textDocument
            indent: root.plain ? 0 : 14
            continued: root.continued
        }
    }
}
