import QtQuick
import QtQuick.Controls.Fusion

/// The content of one tab of the settings: sections that scroll, with a margin on all sides.
Flickable {
    id: root

    default property alias sections: column.data
    property int margin: 24
    property int gap: 18
    property int foot: root.margin

    /// The user came back to the window: what is shown may be outdated.
    signal returned

    contentWidth: width
    contentHeight: column.height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar {
        Accessible.ignored: true
    }

    // Keeps the focused item in sight.
    function follow(item: Item): void {
        for (let at = item; at; at = at.parent) {
            if (at !== column)
                continue;
            const place = item.mapToItem(column, 0, 0).y;
            if (place - 24 < root.contentY)
                root.contentY = Math.max(0, place - 24);
            else if (place + item.height + 24 > root.contentY + root.height)
                root.contentY = Math.min(place + item.height + 24, column.height) - root.height;
            return;
        }
    }
    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged(): void {
            root.follow(root.Window.window.activeFocusItem);
        }
        function onActiveChanged(): void {
            if (root.Window.window.active)
                root.returned();
        }
    }

    Column {
        id: column

        x: root.margin
        width: root.width - 2 * root.margin
        topPadding: root.margin - 6
        bottomPadding: root.foot
        spacing: root.gap
    }

    // It fades out at its lower edge.
    Rectangle {
        parent: root
        y: root.height - height
        visible: !root.atYEnd
        width: root.width
        height: 28
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.alpha(root.palette.window, 0)
            }
            GradientStop {
                position: 1
                color: root.palette.window
            }
        }
    }
}
