import QtQuick

// Text as everything here draws it, read out as well: Qt Quick leaves a plain Text out of the
// accessibility tree, so a screen reader would skip every heading, figure and note.
Text {
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
