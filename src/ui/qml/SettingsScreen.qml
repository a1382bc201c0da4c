import QtQuick
import Quillmere

// The settings section; built the first time it is shown.
Item {
    id: screen
    required property AppStore store
    required property SettingsBridge settings
    required property ShellViewModel shell

    PlaceholderScreen {
        anchors.fill: parent
        sectionTitle: screen.shell.sections[screen.shell.selectedIndex].title
        sectionSymbol: screen.shell.sections[screen.shell.selectedIndex].symbol
    }
}
