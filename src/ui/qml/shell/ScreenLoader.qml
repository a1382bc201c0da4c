import QtQuick

// A section of the main window, built the first time it is shown and kept after that. It is
// named by file, so nothing of it (Qt Charts, for the insights) loads before it is wanted.
Loader {
    id: loader
    required property string file
    // Given to the screen once, when it is built.
    property var screenProperties: ({})

    function build() {
        if (visible && status === Loader.Null)
            setSource(file, screenProperties)
    }
    onVisibleChanged: build()
    Component.onCompleted: build()
}
