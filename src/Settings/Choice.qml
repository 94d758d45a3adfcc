pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design
import Velto.Settings

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
    implicitHeight: Math.round(contentItem.implicitHeight + 12)
    leftPadding: 10
    rightPadding: 30
    currentIndex: root.options.findIndex(option => option.value === root.current)
    Accessible.role: Accessible.ComboBox
    Accessible.name: root.label + ", " + root.displayText
    Accessible.onPressAction: root.popup.open()
    onActivated: index => {
        const value = root.options[index].value;
        root.picked(value);
        root.currentIndex = Qt.binding(() => root.options.findIndex(option => option.value === root.current));
    }

    delegate: MenuItem {
        id: option

        required property int index
        required property var modelData

        width: ListView.view.width
        text: option.modelData.text
        font.weight: root.currentIndex === option.index ? Font.DemiBold : Font.Normal
        highlighted: root.highlightedIndex === option.index
        hoverEnabled: root.hoverEnabled
        Accessible.role: Accessible.MenuItem
        Accessible.name: option.text
        Accessible.onPressAction: option.clicked()
    }
    background: FormFrame {
        control: root
    }
    // The width policy above measures the texts only for a TextInput.
    contentItem: TextInput {
        text: root.displayText
        font: root.font
        color: root.palette.windowText
        enabled: false
        readOnly: true
        clip: true
        verticalAlignment: TextInput.AlignVCenter
        Accessible.ignored: true
    }
    indicator: Symbol {
        x: root.width - width - 10
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.down"
        size: 9 * root.font.pixelSize / 13
        color: root.palette.windowText
    }
}
