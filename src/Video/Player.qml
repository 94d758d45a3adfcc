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
    // The page may ask for anything; only what a browser takes is handed on.
    onNewWindowRequested: request => {
        if (/^https?:\/\//i.test(request.requestedUrl.toString()))
            Qt.openUrlExternally(request.requestedUrl);
    }
    onContextMenuRequested: request => request.accepted = true
    // The page has the keyboard once one presses into it.
    Shortcut {
        sequence: "Escape"
        onActivated: Qt.quit()
    }
    Component.onCompleted: root.loadHtml(root.html, root.base)
}
