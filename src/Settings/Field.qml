import QtQuick
import Velto.Settings

/// A text field that shows what is stored and hands over what is typed, at each key.
FormField {
    id: root

    required property string stored

    signal typed(string text)

    Component.onCompleted: root.text = root.stored
    onStoredChanged: {
        // Not under the hands of who types, unless it is to be emptied.
        if (!root.activeFocus || root.stored === "")
            root.text = root.stored;
    }
    onActiveFocusChanged: {
        if (!root.activeFocus)
            root.text = root.stored;
    }
    onTextEdited: root.typed(root.text)
}
