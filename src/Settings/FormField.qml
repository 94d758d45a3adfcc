import QtQuick
import QtQuick.Controls.Fusion

/// The text field of a window.
TextField {
    id: root

    required property string label

    implicitHeight: Math.round(contentHeight + 12)
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    Accessible.name: root.label
    // The toolkit tells screen readers no name of a field for secrets, and puts the placeholder for its description.
    Accessible.onDescriptionChanged: {
        if (root.echoMode === TextInput.Password && !root.Accessible.description.startsWith(root.label))
            root.Accessible.description = root.label + ", " + root.placeholderText;
    }

    background: Rectangle {
        radius: 6
        color: root.palette.base
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? root.palette.highlight : Qt.alpha(root.palette.windowText, 0.25)
    }
}
