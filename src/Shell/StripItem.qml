import QtQuick

// What stands beside the housing. Built when it is first shown: the strip mostly starts with nothing to say, and its first frame
// needs no typeface then.
Loader {
    id: root

    property bool shown: true

    function build(): void {
        if (root.shown)
            root.active = true;
    }

    active: false
    visible: root.shown
    onShownChanged: build()
    Component.onCompleted: build()
}
