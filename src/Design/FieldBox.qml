import QtQuick
import Velto.Design

/// The box of a text field, darker than what is behind it. Its edge is the focus ring.
RoundedBox {
    id: root

    property bool focused: false
    property bool hovered: false
    /// Whether its content can't be accepted.
    property bool wrong: false

    radius: Theme.radiusControl
    color: Theme.at("black", root.focused ? 0.34 : root.hovered ? 0.2 : 0.28)
    edge: root.focused ? 2 : 1
    edgeColor: root.wrong ? Theme.coral : root.focused ? Theme.ice : Theme.at("white", root.hovered ? 0.3 : 0.2)
}
