import QtQuick
import Velto.Design

/// The box of a field that one types into. Its edge is the focus ring.
Rectangle {
    id: root

    property bool focused: false
    property bool hovered: false
    /// What stands in it can't be taken.
    property bool wrong: false

    radius: Theme.radiusControl
    color: Theme.at("white", root.focused ? 0.09 : root.hovered ? 0.1 : 0.07)
    border.width: root.focused ? 2 : 1
    border.color: root.wrong ? Theme.coral : root.focused ? Theme.ice : Theme.at("white", 0.1)
}
