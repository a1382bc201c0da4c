import QtQuick
import QtQuick.Window
import QtQuick.Shapes
import QtQuick.Templates as T
import Quillmere

// The main window: sidebar, the selected screen over the background gradient, the toast,
// the round-end dialog and the review sheet. It also owns the tray item and its panel.
Window {
    id: root
    required property AppStore store
    objectName: "mainWindow"
    width: 1180
    height: 790
    minimumWidth: 1080
    minimumHeight: 720
    visible: true
    title: "Quillmere"
    color: Theme.background

    ShellViewModel { id: shell; store: root.store }
    // Loaded screens have a `shell` property of their own, so they reach this one by another name.
    property alias shellModel: shell
    SettingsBridge { id: settingsBridge; store: root.store }

    // Both windows follow the chosen appearance; the palette resolves at draw time.
    Binding { target: Theme; property: "dark"; value: shell.dark }

    Sidebar {
        id: sidebar
        objectName: "sidebar"
        shell: shell
        width: 210
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.left: parent.left
    }

    Item {
        id: detail
        objectName: "detail"
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.left: sidebar.right
        anchors.right: parent.right
        clip: true

        Shape {
            anchors.fill: parent
            ShapePath {
                strokeWidth: -1
                fillGradient: LinearGradient {
                    x1: 0; y1: 0
                    x2: detail.width; y2: detail.height
                    GradientStop { position: 0.0; color: Theme.background }
                    GradientStop { position: 0.5; color: Theme.gradientMiddle }
                    GradientStop { position: 1.0; color: Theme.gradientEnd }
                }
                startX: 0; startY: 0
                PathLine { x: detail.width; y: 0 }
                PathLine { x: detail.width; y: detail.height }
                PathLine { x: 0; y: detail.height }
                PathLine { x: 0; y: 0 }
            }
        }

        FocusScreen {
            id: focusScreen
            objectName: "focusScreen"
            anchors.fill: parent
            store: root.store
            settings: settingsBridge
            visible: shell.selectedKey === "focus"
        }

        // The other sections are built the first time they are shown and kept after that.
        ScreenLoader {
            objectName: "insightsLoader"
            anchors.fill: parent
            visible: shell.selectedKey === "insights"
            file: "InsightsScreen.qml"
            screenProperties: ({ objectName: "insightsScreen", store: root.store,
                                 settings: settingsBridge, shell: root.shellModel })
        }
        ScreenLoader {
            objectName: "historyLoader"
            anchors.fill: parent
            visible: shell.selectedKey === "history"
            file: "HistoryScreen.qml"
            screenProperties: ({ objectName: "historyScreen", store: root.store,
                                 settings: settingsBridge, shell: root.shellModel })
        }
        ScreenLoader {
            objectName: "settingsLoader"
            anchors.fill: parent
            visible: shell.selectedKey === "settings"
            file: "SettingsScreen.qml"
            screenProperties: ({ objectName: "settingsScreen", store: root.store,
                                 settings: settingsBridge, shell: root.shellModel })
        }

        Toast {
            objectName: "toast"
            shell: shell
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }

    // The end dialog and the review sheet are built the first time they are wanted and kept.
    // Each is made hidden and then follows the shell, so it fades in the first time as well.
    Loader {
        anchors.fill: parent
        z: 50
        active: shell.endDialogVisible || status !== Loader.Null
        sourceComponent: SessionEndDialog {
            objectName: "endDialog"
            shown: false
            Component.onCompleted: shown = Qt.binding(() => shell.endDialogVisible)
            onContinueChosen: shell.continueRound()
            onReviewChosen: shell.reviewRound()
            onAbandonChosen: shell.abandonRound()
        }
    }

    Loader {
        active: shell.reviewVisible || status !== Loader.Null
        sourceComponent: CompletionSheet {
            objectName: "review"
            store: root.store
            shown: false
            Component.onCompleted: shown = Qt.binding(() => shell.reviewVisible)
        }
    }

    // Asked before quitting during a round or while its review waits; over the review sheet
    // too, so it is a modal popup as well.
    Loader {
        active: shell.quitConfirmVisible || status !== Loader.Null
        sourceComponent: T.Popup {
            id: quitPopup
            objectName: "quitDialog"
            visible: shell.quitConfirmVisible
            modal: true
            focus: true
            z: 100
            closePolicy: T.Popup.NoAutoClose
            anchors.centerIn: T.Overlay.overlay
            padding: 0
            width: quitPanel.width
            height: quitPanel.height
            T.Overlay.modal: Rectangle { color: Theme.alpha("#000000", 0.28) }

            FocusTrap {
                scope: quitPanel
                active: quitPopup.visible
                initialFocus: quitPanel.cancelButton
                onEscapePressed: shell.cancelQuit()
            }
            AbandonSessionDialog {
                id: quitPanel
                buttonPrefix: "quitDialog"
                cancelTitle: shell.quitCancelTitle
                onCancelChosen: shell.cancelQuit()
                onConfirmChosen: shell.confirmQuit()
            }
        }
    }

    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        onActivated: shell.requestQuit()
    }

    // The tray panel is built the first time the icon is clicked.
    Loader {
        id: trayPanelLoader
        active: false
        sourceComponent: TrayPanel {
            objectName: "trayPanel"
            store: root.store
            composited: trayIcon.composited
            onReviewWanted: trayIcon.showMainWindow()
        }
    }

    MainWindowCloser { objectName: "mainWindowCloser"; window: root; shell: shell; trayHost: trayIcon.hostAvailable }

    FloatingTimerController { objectName: "floatingTimerController"; store: root.store; mainWindow: root }

    TrayIcon {
        id: trayIcon
        objectName: "trayIcon"
        onQuitRequested: shell.requestQuit()
        symbol: shell.traySymbol
        panel: trayPanelLoader.item
        mainWindow: root
        onPanelWanted: trayPanelLoader.active = true
    }
}
