import QtQuick
import Velto.Design
import Velto.Home

// A copied video, played without leaving the panel.
Sheet {
    id: root

    required property HomeSource source

    signal done
    /// Closed from within the video, which had the keyboard.
    signal keyboardWanted

    title: qsTr("Video preview")
    symbol: "play.rectangle"
    padding: Theme.gapSection
    onCancelled: root.done()
    actions: [
        PillButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Open in browser")
            onClicked: root.source.openVideoInBrowser()
        },
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            label: qsTr("Close")
            help: "" // it would come under the video
            focus: true
            onClicked: root.done()
        }
    ]

    RoundedBox {
        width: parent.width
        height: width * 9 / 16
        radius: Theme.radiusRow
        color: "black"

        VideoFrame {
            id: frame

            anchors.fill: parent
            player: root.source.videoPlayer // qmllint disable type
            html: root.source.videoHtml
            base: root.source.videoBase
            onCloseWanted: {
                root.keyboardWanted();
                root.done();
            }
        }
        EmptyNote {
            anchors.centerIn: parent
            visible: frame.failed
            symbol: "exclamationmark.triangle"
            text: qsTr("The video couldn't be played here. Open it in the browser instead.")
        }
    }
}
