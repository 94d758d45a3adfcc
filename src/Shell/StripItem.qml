import QtQuick

// What stands beside the housing. Built when it is first shown: the strip mostly starts with nothing to say, and its first frame
// needs no typeface then.
Loader {
    id: root

    property bool shown: true
    /// The width there is: the symbol gives way to a text that leaves it none.
    property real room: Infinity
    readonly property real taken: root.shown ? root.width : 0

    function build(): void {
        if (root.shown)
            root.active = true;
    }

    active: false
    visible: root.shown
    onShownChanged: build()
    Component.onCompleted: build()
}
