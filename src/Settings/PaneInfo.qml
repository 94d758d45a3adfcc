import QtQml

/// One tab of the settings.
QtObject {
    required property string title
    required property string symbol
    required property string file
}
