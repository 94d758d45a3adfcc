import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design

/// The text field of a window.
TextField {
    id: root

    required property string label
    /// Room for a pasted text, however large the letters are.
    readonly property real least: 12 * root.font.pixelSize
    readonly property string hint: (root.echoMode === TextInput.Password ? root.label + ", " : "") + root.placeholderText

    implicitHeight: Math.round(contentHeight + 12)
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    maximumLength: 0x7fffffff // a paste is never cut silently
    validator: LineValidator {
        onRefused: root.ToolTip.show(qsTr("That is too much for one line, so it wasn't taken in."), 6000)
    }
    Accessible.name: root.label
    // The toolkit gives screen readers no name for a field that hides its text, and sometimes makes the placeholder its
    // description.
    Accessible.description: root.hint
    Accessible.onDescriptionChanged: {
        if (root.Accessible.description !== root.hint)
            root.Accessible.description = Qt.binding(() => root.hint);
    }

    background: RoundedBox {
        radius: 8
        color: root.palette.base
        edge: root.activeFocus ? 2 : 1
        edgeColor: root.activeFocus ? root.palette.highlight : Qt.alpha(root.palette.windowText, root.hovered ? 0.4 : 0.25)
    }
}
