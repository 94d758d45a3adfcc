import QtQuick
import QtQuick.Controls.Fusion
import Velto.Design
import Velto.Settings

/// What connecting writes into Claude Code's settings, for the user to agree to.
FormDialog {
    id: root

    required property string text
    /// Whether the user is asked to agree; otherwise the dialog only informs.
    property bool asking: true

    first: root.asking ? add : close
    width: Math.min(480, (parent?.width ?? 480) - 40)
    title: root.asking ? qsTr("Add these hooks to Claude Code?") : qsTr("What changes?")

    component Code: TextArea {
        id: code

        readOnly: true
        selectByMouse: true
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.Wrap
        padding: 10
        background: RoundedBox {
            radius: 8
            color: code.palette.base
            edge: code.activeFocus ? 2 : 1
            edgeColor: code.activeFocus ? code.palette.highlight : Qt.alpha(code.palette.windowText, 0.16)
        }
        font.family: Theme.fixedFamily
        Accessible.name: qsTr("What is added")
        onTextChanged: lines.apply()
        Component.onCompleted: lines.apply()

        FontMetrics {
            id: letters

            font: code.font
        }
        HangingIndent {
            id: lines

            document: code.textDocument
            indent: 4 * letters.averageCharacterWidth
        }
    }

    contentItem: Column {
        spacing: 12

        FormText {
            width: parent.width
            text: qsTr("Velto adds this to ~/.claude/settings.json and keeps your other settings and hooks. A backup is saved first, and Disconnect removes it again.")
        }
        ScrollView {
            width: parent.width
            // All of it if the window allows; else it shows that there is more.
            height: Math.min(contentHeight, Math.max(120, (root.parent?.height ?? 440) - 240))
            ScrollBar.vertical.policy: height < contentHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

            Code {
                text: root.text
            }
        }
    }
    footer: DialogFooter {
        FormButton {
            id: close

            text: root.asking ? qsTr("Cancel") : qsTr("Close")
            onClicked: root.reject()
        }
        FormButton {
            id: add

            visible: root.asking
            text: qsTr("Add hooks")
            highlighted: true
            onClicked: root.accept()
        }
    }
}
