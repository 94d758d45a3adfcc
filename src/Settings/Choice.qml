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

    delegate: ItemDelegate {
        id: option

        required property int index
        required property var modelData

        width: ListView.view?.width ?? 0
        implicitHeight: Math.round(implicitContentHeight + 10)
        leftPadding: root.leftPadding - 4
        rightPadding: leftPadding
        text: option.modelData.text
        font.weight: root.currentIndex === option.index ? Font.DemiBold : Font.Normal
        highlighted: root.highlightedIndex === option.index
        hoverEnabled: root.hoverEnabled
        Accessible.role: Accessible.MenuItem
        Accessible.name: option.text
        Accessible.onPressAction: option.clicked()
        background: RoundedBox {
            radius: 6
            color: option.highlighted ? Qt.darker(root.palette.highlight, option.down ? 1.15 : 1) : "transparent"
        }
        contentItem: FormText {
            text: option.text
            font: option.font
            wrapMode: Text.NoWrap
            verticalAlignment: Text.AlignVCenter
            color: option.highlighted ? root.palette.highlightedText : root.palette.windowText
            Accessible.ignored: true
        }
    }
    // Under the picker, over it where there is no room below.
    popup: Popup {
        y: root.height + 4
        width: root.width
        padding: 4
        margins: 8
        background: RoundedBox {
            radius: 8
            color: root.palette.base
            edge: 1
            edgeColor: Qt.alpha(root.palette.windowText, 0.2)
        }
        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.delegateModel // qmllint disable type
            currentIndex: root.highlightedIndex
            highlightMoveDuration: 0
            Accessible.ignored: true
        }
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
