import QtQuick
import QtQuick.Window
import QtQuick.Shapes
import QtQuick.Templates as T
import Quillmere

// The main window: sidebar, the selected screen over the background gradient, the toast,
// the round-end dialog and the review sheet. It also owns the tray item and its panel.
Window {
    id: root
    required property ViewModels models
    objectName: "mainWindow"
    width: 1180
    height: 790
    minimumWidth: 1080
    minimumHeight: 720
    visible: true
    title: "Quillmere"
    color: Theme.background

    // Loaded screens have a `shell` property of their own, so they reach this one by another name.
    readonly property ShellViewModel shellModel: models.shell
    // Closing the window quits the app unless a tray keeps it: a last failed save is tried
    // again first, and if it still fails the user decides.
    onClosing: (close) => {
        if (shellModel.closingQuits && shellModel.holdQuit())
            close.accepted = false
    }

    // Both windows follow the chosen appearance; the palette resolves at draw time.
    Binding { target: Theme; property: "dark"; value: shellModel.dark }

    Sidebar {
        id: sidebar
        objectName: "sidebar"
        shell: root.shellModel
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
            models: root.models
            visible: shellModel.selectedKey === "focus"
        }

        // The other sections are built the first time they are shown and kept after that.
        ScreenLoader {
            objectName: "insightsLoader"
            anchors.fill: parent
            visible: shellModel.selectedKey === "insights"
            file: "InsightsScreen.qml"
            screenProperties: ({ objectName: "insightsScreen", models: root.models })
        }
        ScreenLoader {
            objectName: "historyLoader"
            anchors.fill: parent
            visible: shellModel.selectedKey === "history"
            file: "HistoryScreen.qml"
            screenProperties: ({ objectName: "historyScreen", models: root.models })
        }
        ScreenLoader {
            objectName: "settingsLoader"
            anchors.fill: parent
            visible: shellModel.selectedKey === "settings"
            file: "SettingsScreen.qml"
            screenProperties: ({ objectName: "settingsScreen", models: root.models })
        }

        Toast {
            objectName: "toast"
            shell: root.shellModel
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }

    // The end dialog and the review sheet are built the first time they are wanted and kept.
    // Each is made hidden and then follows the shell, so it fades in the first time as well.
    Loader {
        anchors.fill: parent
        z: 50
        active: shellModel.endDialogVisible || status !== Loader.Null
        sourceComponent: SessionEndDialog {
            objectName: "endDialog"
            shown: false
            Component.onCompleted: shown = Qt.binding(() => shellModel.endDialogVisible)
            onContinueChosen: shellModel.continueRound()
            onReviewChosen: shellModel.reviewRound()
            onAbandonChosen: shellModel.abandonRound()
        }
    }

    Loader {
        active: shellModel.reviewVisible || status !== Loader.Null
        sourceComponent: CompletionSheet {
            objectName: "review"
            models: root.models
            shown: false
            Component.onCompleted: shown = Qt.binding(() => shellModel.reviewVisible)
        }
    }

    Loader {
        anchors.fill: parent
        z: 70
        active: shellModel.quitWarningVisible || status !== Loader.Null
        sourceComponent: ConfirmAlert {
            objectName: "quitWarning"
            shown: shellModel.quitWarningVisible
            symbol: "exclamationmark.triangle.fill"
            title: "专注记录还没有保存"
            message: shellModel.quitWarningText
            confirmText: "仍然退出"
            cancelText: "返回"
            onConfirmed: shellModel.quitAnyway()
            onCancelled: shellModel.keepRunning()
        }
    }

    // Asked before quitting during a round or while its review waits; over the review sheet
    // too, so it is a modal popup as well.
    Loader {
        active: shellModel.quitConfirmVisible || status !== Loader.Null
        sourceComponent: T.Popup {
            id: quitPopup
            objectName: "quitDialog"
            visible: shellModel.quitConfirmVisible
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
                onEscapePressed: shellModel.cancelQuit()
            }
            AbandonSessionDialog {
                id: quitPanel
                buttonPrefix: "quitDialog"
                cancelTitle: shellModel.quitCancelTitle
                onCancelChosen: shellModel.cancelQuit()
                onConfirmChosen: shellModel.confirmQuit()
            }
        }
    }

    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        onActivated: shellModel.requestQuit()
    }

    // The tray panel is built the first time the icon is clicked.
    Loader {
        id: trayPanelLoader
        active: false
        sourceComponent: TrayPanel {
            objectName: "trayPanel"
            models: root.models
            composited: trayIcon.composited
            onReviewWanted: trayIcon.showMainWindow()
        }
    }

    MainWindowCloser { objectName: "mainWindowCloser"; window: root; shell: root.shellModel; trayHost: trayIcon.hostAvailable }

    TrayIcon {
        id: trayIcon
        objectName: "trayIcon"
        onQuitRequested: shellModel.requestQuit()
        symbol: shellModel.traySymbol
        panel: trayPanelLoader.item
        mainWindow: root
        onPanelWanted: trayPanelLoader.active = true
    }
}
