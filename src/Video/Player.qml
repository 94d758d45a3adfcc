import QtQuick
import QtWebEngine

WebEngineView {
    id: root

    required property string html
    required property url base

    backgroundColor: "black"
    settings.playbackRequiresUserGesture: false
    settings.localContentCanAccessFileUrls: false
    settings.javascriptCanOpenWindows: false
    // The page may ask for any address; only what a browser would open is passed on.
    onNewWindowRequested: request => {
        if (/^https?:\/\//i.test(request.requestedUrl.toString()))
            Qt.openUrlExternally(request.requestedUrl);
    }
    onContextMenuRequested: request => request.accepted = true
    // The page takes the keyboard once it is pressed, so Escape is handled here.
    Shortcut {
        sequence: "Escape"
        onActivated: Qt.quit()
    }
    Component.onCompleted: root.loadHtml(root.html, root.base)
}
