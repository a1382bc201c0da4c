import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The "结束音乐" card: what plays when a round completes, and a test of it.
SettingsCard {
    id: card
    required property MusicSettingsViewModel music
    title: "结束音乐"
    subtitle: "一轮结束后，用音乐切换状态"
    symbol: card.music.cardSymbol

    Item {
        width: parent.width
        height: autoPlay.implicitHeight + 14
        QuillSwitch {
            id: autoPlay
            objectName: "settings.music.autoPlay"
            width: parent.width
            anchors.verticalCenter: parent.verticalCenter
            text: card.music.autoPlayTitle
            font.pixelSize: 12
            font.weight: Font.DemiBold
            checked: card.music.autoPlay
            onToggled: card.music.autoPlay = checked
        }
    }
    SettingRow {
        title: "音乐服务"
        detail: "选择专注结束时控制的播放器"
        QuillComboBox {
            objectName: "settings.music.service"
            width: 145
            implicitHeight: 30
            font.pixelSize: 12
            model: card.music.serviceOptions
            currentIndex: card.music.serviceIndex
            Accessible.name: "音乐服务：" + displayText
            onActivated: (index) => card.music.serviceIndex = index
        }
    }
    QuillText {
        objectName: "settings.music.netEaseNote"
        visible: card.music.netEase
        width: parent.width
        topPadding: 4
        bottomPadding: 8
        text: card.music.netEaseNote
        font.pixelSize: 10
        color: Theme.secondaryText
        wrapMode: Text.WordWrap
    }
    SettingRow {
        objectName: "settings.music.sourceRow"
        visible: !card.music.netEase
        title: "歌曲范围"
        detail: "从资料库或指定列表中随机"
        QuillComboBox {
            objectName: "settings.music.source"
            width: 145
            implicitHeight: 30
            font.pixelSize: 12
            model: card.music.sourceOptions
            currentIndex: card.music.sourceIndex
            Accessible.name: "歌曲范围：" + displayText
            onActivated: (index) => card.music.sourceIndex = index
        }
    }
    Column {
        objectName: "settings.music.playlist"
        visible: card.music.playlistShown
        width: parent.width
        bottomPadding: 8
        spacing: 4
        QuillTextField {
            objectName: "settings.music.playlistField"
            width: parent.width
            implicitHeight: 32
            font.pixelSize: 11
            placeholderText: "播放列表名称"
            text: card.music.playlistName
            onTextEdited: card.music.playlistName = text
        }
        QuillText {
            text: card.music.playlistCaption
            font.pixelSize: 9
            color: Theme.secondaryText
        }
    }
    Item {
        width: parent.width
        height: Math.max(hint.implicitHeight, test.implicitHeight) + 16
        Rectangle { width: parent.width; height: 1; color: Theme.hairline }
        Column {
            id: hint
            anchors.left: parent.left
            anchors.right: test.left
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            QuillText {
                objectName: "settings.music.hintTitle"
                width: parent.width
                text: card.music.hintTitle
                font.pixelSize: 10
                font.weight: Font.DemiBold
                color: Theme.primaryText
                elide: Text.ElideRight
            }
            QuillText {
                objectName: "settings.music.hintDetail"
                width: parent.width
                text: card.music.hintDetail
                font.pixelSize: 9
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
            }
        }
        QuillSecondaryButton {
            id: test
            objectName: "settings.music.test"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: "测试随机播放"
            enabled: card.music.testEnabled
            onClicked: card.music.testMusic()
        }
    }
    QuillText {
        objectName: "settings.music.message"
        visible: text !== ""
        width: parent.width
        bottomPadding: 4
        text: card.music.message
        font.pixelSize: 10
        font.weight: Font.Medium
        color: Theme.palette.tint(card.music.messageTint)
        wrapMode: Text.WordWrap
    }
}
