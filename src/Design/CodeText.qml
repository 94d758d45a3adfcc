import QtQuick
import Velto.Design

/// A text on several lines, in which words between backticks are shown in the code face, without them.
PlainText {
    id: root

    readonly property bool coded: /`[^`\n]+`/.test(root.words)

    multiline: true
    text: root.coded ? Plain.coded(root.words, Theme.fixedFamily) : Plain.lines(root.words)
    textFormat: root.coded ? Text.RichText : Text.PlainText // nothing in it is taken for markup
}
