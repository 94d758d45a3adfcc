import QtQuick
import Velto.Design

/// A field for one line of text. Bind `text` to a store's property and pass it what `edited` brings.
FocusScope {
    id: root

    /// Its name for screen readers.
    required property string label
    property string prompt
    /// Whether its name stays in sight, at its end, when a text has taken the prompt's place.
    property bool named: false
    property string symbol
    property bool clearable: false
    /// Shows dots instead of the text.
    property bool secure: false
    /// Whether it can be edited. It fades if not; see ButtonBase.
    property bool available: true
    /// Whether its content can't be accepted.
    property bool wrong: false
    /// Room kept free at its end.
    property real reserved: 0
    property alias text: input.text
    property alias input: input
    readonly property real inset: Math.round(10 * Theme.textScale)
    readonly property bool hovered: hover.hovered && !Theme.pointerRests

    /// The user changed the text.
    signal edited(string text)
    /// Return was pressed, or the focus went elsewhere.
    signal finished
    /// Return was pressed. The key goes on to what is around the field.
    signal accepted

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    enabled: root.available
    opacity: root.available ? 1 : 0.4

    function focusAll(): void {
        input.forceActiveFocus(Qt.OtherFocusReason);
        input.selectAll();
    }

    HoverHandler {
        id: hover

        cursorShape: Qt.IBeamCursor
    }
    TapHandler {
        onTapped: input.forceActiveFocus(Qt.MouseFocusReason)
    }

    FieldBox {
        anchors.fill: parent
        focused: input.activeFocus && !Theme.keyboardElsewhere
        hovered: hover.hovered && !Theme.pointerRests
        wrong: root.wrong
    }
    Symbol {
        id: mark

        x: root.inset - 1
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        name: root.symbol
        size: Theme.textBody
        color: Theme.glassTertiary
    }
    PlainText {
        anchors.fill: input
        visible: input.text === "" && input.preeditText === ""
        words: root.prompt
        color: Theme.glassTertiary
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    TextInput {
        id: input

        x: mark.visible ? mark.x + mark.width + Math.round(6 * Theme.textScale) : root.inset
        // Letters from another font make the line higher; see PlainText.
        y: Theme.capitalsDrop(input.font.pixelSize, input.contentHeight)
           - Theme.foreignRise(input.text + input.preeditText, input.font)
        width: root.width - x - root.inset - root.reserved - (name.visible ? name.width + root.inset : 0) - (clear.visible ? clear.width - 6 : 0)
        height: root.height
        focus: true
        activeFocusOnTab: true
        cursorVisible: input.activeFocus && !Theme.keyboardElsewhere
        clip: true
        maximumLength: 0x7fffffff // a paste is never cut silently
        horizontalAlignment: TextInput.AlignLeft // as the prompt, and the same text in a list
        verticalAlignment: TextInput.AlignVCenter
        color: Theme.glassPrimary
        selectionColor: Theme.at(Theme.ice, 0.35)
        selectedTextColor: Theme.glassPrimary
        selectByMouse: true
        validator: LineValidator {
            onRefused: refusal.show()
        }
        renderType: Text.NativeRendering
        font.family: Theme.family
        font.pixelSize: Math.round(Theme.textBody * Theme.textScale)
        echoMode: root.secure ? TextInput.Password : TextInput.Normal
        passwordCharacter: "•"
        Accessible.role: Accessible.EditableText
        Accessible.name: root.label
        // The toolkit gives screen readers no name for a field that hides its text.
        Accessible.description: refusal.item ? refusal.text : root.prompt === root.label && !root.secure ? "" : root.prompt
        Accessible.editable: true
        Accessible.focusable: true
        onEditingFinished: root.finished()
        onTextEdited: root.edited(input.text)
        onAccepted: root.accepted()
    }
    Loader {
        id: refusal

        readonly property string text: qsTr("That is too much for one line, so it wasn't taken in.")

        function show(): void {
            setSource("HelpTip.qml", {"target": root, "text": refusal.text});
            shown.restart();
        }

        Timer {
            id: shown

            interval: 6000
            onTriggered: refusal.setSource("")
        }
    }
    PlainText {
        id: name

        anchors.right: parent.right
        anchors.rightMargin: root.inset + root.reserved
        anchors.baseline: input.baseline
        width: Math.min(implicitWidth, 0.4 * root.width)
        visible: root.named && (input.text !== "" || input.preeditText !== "")
        text: root.label
        size: Theme.textSmall
        color: Theme.glassTertiary
        Accessible.ignored: true // it is what the field is called
    }
    ButtonBase {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: Math.round(20 * Theme.textScale)
        height: width
        corner: width / 2
        visible: root.clearable && input.text !== ""
        label: qsTr("Clear")
        onClicked: {
            input.forceActiveFocus(Qt.OtherFocusReason);
            root.edited("");
        }

        HoverHandler {
            cursorShape: Qt.ArrowCursor
        }
        Symbol {
            anchors.centerIn: parent
            name: "xmark.circle.fill"
            size: Theme.textBody
            color: clear.hovered ? Theme.glassPrimary : Theme.glassTertiary
        }
    }
}
