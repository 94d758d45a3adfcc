import QtQuick
import QtQuick.Controls.Fusion

/// A text of a window, in the desktop's own font and colours. Never rich text.
Label {
    id: root

    property bool quiet: false

    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: root.palette.windowText
    opacity: root.quiet ? 0.68 : 1
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text
}
