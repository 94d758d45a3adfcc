pragma ComponentBehavior: Bound

import QtQuick
import Velto.Settings

SettingsPane {
    id: root

    required property SettingsStore store
    readonly property ModuleSettings modules: root.store.modules

    FormSection {
        title: qsTr("Show in Velto")
        footer: qsTr("Turned-off modules disappear everywhere: tabs, Home, the velto strip and Peeks.")

        Repeater {
            model: root.modules.modules

            FormRow {
                id: row

                required property string module
                required property string label
                required property string detail
                required property bool on

                title: row.label
                note: row.detail

                Toggle {
                    label: row.label
                    on: row.on
                    onWanted: on => root.modules.set(row.module, on)
                }
            }
        }
    }
    FormSection {
        visible: root.modules.foldersShown
        title: qsTr("Code folders")
        footer: qsTr("Velto looks for git repos up to three levels inside these folders.")

        Repeater {
            model: root.modules.folders

            FormRow {
                id: place

                required property string folder
                required property string shown

                symbol: "folder"
                title: place.shown

                FormButton {
                    id: remove

                    text: qsTr("Remove")
                    Accessible.name: qsTr("Remove %1").arg(place.shown)
                    onClicked: {
                        if (remove.visualFocus)
                            add.forceActiveFocus(Qt.TabFocusReason);
                        root.modules.removeFolder(place.folder);
                    }
                }
            }
        }
        FormRow {
            FormButton {
                id: add

                text: qsTr("Add folder…")
                onClicked: root.modules.chooseFolders()
            }
        }
    }
}
