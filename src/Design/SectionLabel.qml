import QtQuick
import Velto.Design

/// The small heading above a group.
PlainText {
    size: Theme.textTitle
    weight: Font.DemiBold
    color: Theme.glassSecondary
    topPadding: Math.round(6 * Theme.textScale)
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
