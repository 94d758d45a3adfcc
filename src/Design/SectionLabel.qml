import QtQuick
import Velto.Design

/// The small heading above a group.
PlainText {
    size: Theme.textTitle
    weight: Font.DemiBold
    color: Theme.glassSecondary
    topPadding: 6
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
