import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design

/// A text of a window, in the desktop's own font and colours. Never rich text.
Label {
    id: root

    enum Tone {
        Plain,
        Good,
        Warning
    }

    property bool quiet: false
    property int tone: FormText.Plain
    /// How much larger the desktop's letters are than those the symbols were drawn for.
    readonly property real growth: Math.max(1, root.font.pixelSize / 13)
    readonly property bool onLight: root.palette.window.hslLightness > 0.5

    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    color: root.tone === FormText.Good ? (root.onLight ? "#1b7a3d" : "#63d68c")
                                       : root.tone === FormText.Warning ? (root.onLight ? "#a8500a" : "#ffb057") : root.palette.windowText
    opacity: root.quiet && root.tone === FormText.Plain && !Theme.highContrast ? 0.68 : 1
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text
    Accessible.focusable: false
    Accessible.ignored: root.text === ""
}
