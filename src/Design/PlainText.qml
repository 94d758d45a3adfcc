import QtQuick
import Velto.Design

/// The one text item: never rich text. Text from outside goes into `words`, where invisible characters become marks and, unless
/// `multiline`, so do line breaks; our own texts, and text that is safe to show already, may go into `text`.
Text {
    id: root

    property string words
    property int size: Theme.textBody
    property int weight: Font.Normal
    property bool multiline: false
    /// Off where there is no room for enlarged letters: in the strip.
    property bool grows: true

    text: root.multiline ? Plain.lines(root.words) : Plain.line(root.words)
    textFormat: Text.PlainText
    color: Theme.glassPrimary
    horizontalAlignment: Text.AlignLeft // a right-to-left name in a list stays in its column
    renderType: Text.NativeRendering
    elide: root.multiline ? Text.ElideNone : Text.ElideRight
    wrapMode: root.multiline ? Text.Wrap : Text.NoWrap
    maximumLineCount: root.multiline ? 10000 : 1
    font.family: Theme.family
    font.pixelSize: Math.round(root.size * (root.grows ? Theme.textScale : 1))
    font.weight: root.weight
    linkColor: root.color
    // Letters from another font make a line higher: it hangs over then, so that its letters stand where others do.
    readonly property bool foreign: Theme.mayBeForeign(root.text)
    topPadding: root.foreign ? -Theme.foreignRise(root.text, root.font) : 0
    bottomPadding: root.foreign && !root.multiline ? -Theme.foreignDrop(root.text, root.font) : 0
    // A centred line has its capitals in the middle, to within a logical pixel.
    anchors.alignWhenCentered: false
    anchors.verticalCenterOffset: root.multiline ? 0 : Theme.capitalsDrop(root.font.pixelSize, root.height)
}
