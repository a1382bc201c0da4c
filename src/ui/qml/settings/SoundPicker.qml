import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// A sound menu, 110 points wide, and the borderless button that plays the chosen sound.
Row {
    id: picker
    property var options: []
    property int currentIndex: 0
    property string accessibleName
    signal chosen(int index)
    signal preview()
    spacing: 4

    QuillComboBox {
        objectName: picker.objectName + ".box"
        width: 110
        implicitHeight: 30
        font.pixelSize: 12
        model: picker.options
        currentIndex: picker.currentIndex
        Accessible.name: picker.accessibleName + "：" + displayText
        optionSymbols: ({ "随机": "shuffle" })
        onActivated: (index) => picker.chosen(index)
    }
    QuillButtonBase {
        id: play
        objectName: picker.objectName + ".preview"
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        focusPolicy: Qt.StrongFocus
        Accessible.name: "试听" + picker.accessibleName
        onClicked: picker.preview()
        background: Rectangle {
            radius: 8
            color: play.pressed ? Theme.palette.neutralFill(0.09) : "transparent"
            FocusRing { control: play; baseRadius: 8 }
        }
        contentItem: SymbolIcon {
            name: "speaker.wave.2.fill"
            size: 14
            color: Theme.mint
        }
    }
}
