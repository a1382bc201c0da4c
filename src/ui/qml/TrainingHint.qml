import QtQuick
import Quillmere

// Today's suggested length, shown while no round runs.
QuillCard {
    id: card
    required property FocusViewModel vm
    padding: 20
    implicitHeight: Math.max(badge.height, texts.implicitHeight) + 2 * padding

    Rectangle {
        id: badge
        width: 46
        height: 46
        radius: 23
        color: Theme.alpha(Theme.mint, 0.12)
        SymbolIcon {
            anchors.centerIn: parent
            name: "figure.mind.and.body"
            size: 21
            color: Theme.mint
        }
    }
    Column {
        id: texts
        anchors.left: badge.right
        anchors.leftMargin: 14
        anchors.right: adopt.left
        anchors.rightMargin: 14
        spacing: 5
        QuillText {
            objectName: "focus.hint.text"
            width: parent.width
            text: card.vm.recommendationText
            font.pixelSize: 15
            font.weight: Font.DemiBold
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        QuillText {
            width: parent.width
            text: "建议来自最近的完成率、走神点和精力变化。连续三轮状态良好后，只增加 5 分钟。"
            font.pixelSize: 11
            color: Theme.secondaryText
            wrapMode: Text.WordWrap
        }
    }
    QuillSecondaryButton {
        id: adopt
        objectName: "focus.hint.adopt"
        anchors.right: parent.right
        anchors.verticalCenter: texts.verticalCenter
        text: "采用建议"
        onClicked: card.vm.adoptRecommendation()
    }
}
