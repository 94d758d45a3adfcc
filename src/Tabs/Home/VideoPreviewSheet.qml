import QtQuick
import Velto.Design
import Velto.Home
import Velto.Stores

// A copied video, played without leaving the panel.
Sheet {
    id: root

    required property HomeSource source

    signal done

    title: qsTr("Video preview")
    onCancelled: root.done()

    Item {
        width: parent.width
        height: actions.height

        PillButton {
            id: actions

            text: qsTr("Open in browser")
            onClicked: root.source.openVideoInBrowser()
        }
        IconButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            label: qsTr("Close")
            focus: true
            onClicked: root.done()
        }
    }
    Rectangle {
        width: parent.width
        height: width * 9 / 16
        radius: 10
        color: "black"

        VideoFrame {
            id: frame

            anchors.fill: parent
            player: root.source.videoPlayer // qmllint disable type
            html: root.source.videoHtml
            base: root.source.videoBase
        }
        EmptyNote {
            anchors.centerIn: parent
            visible: frame.failed
            symbol: "exclamationmark.triangle"
            text: qsTr("The video couldn't be played here. Open it in the browser instead.")
        }
    }
}
