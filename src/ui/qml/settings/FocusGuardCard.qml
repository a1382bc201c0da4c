import QtQuick
import Quillmere

// The "专注保护" card: the desktop keeps quiet during a round, and a locked screen pauses it.
SettingsCard {
    id: card
    required property FocusGuardViewModel guard
    title: "专注保护"
    subtitle: "让桌面在专注时保持安静"
    symbol: "moon.stars.fill"

    SettingRow {
        objectName: "settings.guard.notificationsRow"
        title: "专注时暂停桌面通知"
        detail: card.guard.holdDetail
        QuillSwitch {
            objectName: "settings.guard.notifications"
            Accessible.name: "专注时暂停桌面通知"
            Accessible.description: card.guard.holdDetail
            enabled: card.guard.holdAvailable
            opacity: enabled ? 1 : 0.5
            checked: card.guard.holdNotifications
            onToggled: card.guard.holdNotifications = checked
        }
    }
    SettingRow {
        title: "锁屏时暂停本轮"
        detail: "离开电脑不计入专注，回来后手动继续"
        QuillSwitch {
            objectName: "settings.guard.screenLock"
            Accessible.name: "锁屏时暂停本轮"
            checked: card.guard.pauseOnLock
            onToggled: card.guard.pauseOnLock = checked
        }
    }
}
