import QtQuick
import QtQuick.Controls.Fusion

/// A picker over {text, value}. What is shown follows `current`, whoever changes it.
ComboBox {
    id: root

    required property string label
    required property var options
    required property int current

    signal picked(int value)

    model: root.options
    textRole: "text"
    valueRole: "value"
    implicitContentWidthPolicy: ComboBox.WidestText
    currentIndex: root.options.findIndex(option => option.value === root.current)
    Accessible.name: root.label
    onActivated: index => {
        const value = root.options[index].value;
        root.picked(value);
        root.currentIndex = Qt.binding(() => root.options.findIndex(option => option.value === root.current));
    }
}
