import QtQuick
import Velto.Design

/// A field for several lines of text. It grows with its text between `leastLines` and `mostLines`, then scrolls. Return is a
/// line break. Bind `text` to a store's property and pass it what `edited` brings.
FocusScope {
    id: root

    /// Its name for screen readers.
    required property string label
    property string prompt
    /// Whether it can be edited. It fades if not; see ButtonBase.
    property bool available: true
    property int leastLines: 2
    property int mostLines: 5
    property alias text: input.text

    readonly property real inset: Math.round(7 * Theme.textScale)
    readonly property real side: Math.round(10 * Theme.textScale)
    readonly property real line: Math.ceil(lines.lineSpacing)

    /// The text has changed; the store may have changed it.
    signal edited(string text)
    /// Control and Return were pressed.
    signal submitted

    implicitWidth: 200
    implicitHeight: Math.max(root.leastLines * root.line, Math.min(input.contentHeight, root.mostLines * root.line))
                    + 2 * root.inset
    enabled: root.available
    opacity: root.available ? 1 : 0.4

    HoverHandler {
        id: hover

        cursorShape: Qt.IBeamCursor
    }
    TapHandler {
        onTapped: input.forceActiveFocus(Qt.MouseFocusReason)
    }
    FontMetrics {
        id: lines

        font: input.font
    }

    FieldBox {
        anchors.fill: parent
        focused: input.activeFocus && !Theme.keyboardElsewhere
        hovered: hover.hovered && !Theme.pointerRests
    }
    PlainText {
        x: root.side
        y: root.inset
        width: root.width - 2 * root.side
        visible: input.text === "" && input.preeditText === ""
        words: root.prompt
        color: Theme.glassTertiary
        Accessible.ignored: true
    }
    Flickable {
        id: area

        x: root.side
        y: root.inset
        width: root.width - 2 * root.side
        height: root.height - 2 * root.inset
        clip: true
        interactive: contentHeight > height
        contentHeight: input.height
        boundsBehavior: Flickable.StopAtBounds

        // Keeps the cursor in sight.
        function follow(line: rect): void {
            if (line.y < contentY)
                contentY = line.y;
            else if (line.y + line.height > contentY + height)
                contentY = line.y + line.height - height;
        }

        TextEdit {
            id: input

            width: area.width
            height: Math.max(contentHeight, area.height)
            focus: true
            activeFocusOnTab: true
            cursorVisible: input.activeFocus && !Theme.keyboardElsewhere
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            color: Theme.glassPrimary
            selectionColor: Theme.at(Theme.ice, 0.35)
            selectedTextColor: Theme.glassPrimary
            selectByMouse: true
            renderType: Text.NativeRendering
            font.family: Theme.family
            font.pixelSize: Math.round(Theme.textBody * Theme.textScale)
            Accessible.role: Accessible.EditableText
            Accessible.name: root.label
            Accessible.description: root.prompt === root.label ? "" : root.prompt
            Accessible.editable: true
            Accessible.multiLine: true
            Accessible.focusable: true
            Keys.onPressed: event => {
                if ((event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter) || !(event.modifiers & Qt.ControlModifier))
                    return;
                event.accepted = true;
                root.submitted();
            }
            onTextChanged: root.edited(input.text)
            onCursorRectangleChanged: area.follow(input.cursorRectangle)
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: 1
        y: area.y
        height: area.height
        area: area
    }
}
