import QtQuick
import Velto.Settings

/// A text field that shows what is stored and passes on what is typed, with each key.
FormField {
    id: root

    required property string stored

    signal typed(string text)

    Component.onCompleted: root.text = root.stored
    onStoredChanged: {
        // The text isn't replaced while the user types, unless it is to be emptied or comes back.
        if (!root.activeFocus || root.stored === "" || root.text === "")
            root.text = root.stored;
    }
    onActiveFocusChanged: {
        if (!root.activeFocus)
            root.text = root.stored;
    }
    onTextEdited: root.typed(root.text)
}
