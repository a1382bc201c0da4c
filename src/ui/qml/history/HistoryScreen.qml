import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The "记录" section: heading with the export, three totals and one card per stored round,
// built as they scroll into view; an empty state before the first round.
Item {
    id: screen
    required property ViewModels models

    readonly property HistoryViewModel vm: models.history

    ListView {
        id: list
        KeepFocusInView { flickable: list }
        objectName: "history.list"
        anchors.fill: parent
        anchors.leftMargin: 30
        anchors.rightMargin: 30
        topMargin: 34
        bottomMargin: 30
        spacing: 12
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: vm.sessions
        activeFocusOnTab: !vm.empty
        keyNavigationEnabled: true
        highlightFollowsCurrentItem: false
        currentIndex: 0
        Accessible.role: Accessible.List
        Accessible.name: "专注记录"
        ScrollBar.vertical: QuillScrollBar {}

        // The card's menu from the keyboard, as a right click opens it.
        Keys.onMenuPressed: openCurrentMenu()
        Keys.onDeletePressed: if (currentIndex >= 0) vm.requestDelete(currentIndex)
        Keys.onPressed: (event) => {
            if (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier)) {
                openCurrentMenu();
                event.accepted = true;
            }
        }
        function openCurrentMenu() {
            if (!currentItem)
                return;
            currentItem.openMenu(24, currentItem.height / 2);
            // From the keyboard the first entry is current at once, so Return takes it, and
            // closing gives the focus back to the row.
            cardMenu.fromKeyboard = true;
            cardMenu.currentIndex = 0;
        }

        header: Column {
            width: list.width
            spacing: 22
            bottomPadding: 20

            Item {
                width: parent.width
                height: Math.max(heading.implicitHeight, exportButton.implicitHeight)
                SectionHeading {
                    id: heading
                    objectName: "history.heading"
                    anchors.left: parent.left
                    anchors.bottom: parent.bottom
                    eyebrow: "Focus Journal"
                    title: "每一轮，都是一条线索"
                    subtitle: "记录不是监督，而是帮你找到更适合自己的节律。"
                }
                QuillSecondaryButton {
                    id: exportButton
                    objectName: "history.export"
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    text: "导出 CSV"
                    symbol: "square.and.arrow.up"
                    onClicked: vm.exportCsv()
                }
            }

            Row {
                objectName: "history.totals"
                visible: !vm.empty
                spacing: 34
                HistorySummaryMetric {
                    objectName: "history.total.count"
                    symbol: "circle.grid.2x2.fill"
                    value: vm.countText
                    label: "总轮次"
                    tint: Theme.mint
                }
                HistorySummaryMetric {
                    objectName: "history.total.minutes"
                    symbol: "clock.fill"
                    value: vm.minutesText
                    label: "累计分钟"
                    tint: Theme.blue
                }
                HistorySummaryMetric {
                    objectName: "history.total.rating"
                    symbol: "sparkles"
                    value: vm.averageFocusText
                    label: "平均专注评分"
                    tint: Theme.amber
                }
            }
        }

        footer: Item {
            width: list.width
            height: vm.empty ? Math.max(empty.implicitHeight,
                                        list.height - list.topMargin - list.bottomMargin
                                        - (list.headerItem ? list.headerItem.height : 0)) : 0
            visible: vm.empty
            HistoryEmptyState {
                id: empty
                objectName: "history.empty"
                anchors.centerIn: parent
                width: parent.width
                onStartChosen: vm.showFocus()
            }
        }

        delegate: SessionCard {
            id: cardDelegate
            objectName: "history.card." + index
            width: ListView.view.width
            current: ListView.isCurrentItem && ListView.view.activeFocus
            onMenuRequested: (x, y) => {
                cardMenu.row = index;
                cardMenu.popup(cardDelegate, x, y);
            }
        }
    }

    // One menu for every card: a menu per card would make each card far costlier to build.
    Menu {
        id: cardMenu
        objectName: "history.menu"
        property int row: -1
        property bool fromKeyboard: false
        onClosed: {
            if (fromKeyboard && !vm.confirmingDelete)
                list.forceActiveFocus(Qt.TabFocusReason);
            fromKeyboard = false;
        }
        MenuItem {
            objectName: "history.menu.delete"
            text: "删除这条记录"
            Accessible.name: text
            leftPadding: 10
            rightPadding: 10
            onTriggered: vm.requestDelete(cardMenu.row)
            contentItem: QuillText {
                text: parent.text
                font.pixelSize: 13
                color: Theme.coral
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle {
                implicitWidth: 160
                implicitHeight: 32
                radius: 8
                color: parent.highlighted ? Theme.alpha(Theme.coral, 0.12) : "transparent"
            }
        }
        background: Rectangle {
            implicitWidth: 170
            radius: 10
            color: Theme.background
            border.width: 1
            border.color: Theme.hairline
        }
    }

    ConfirmAlert {
        objectName: "history.confirm"
        shown: vm.confirmingDelete
        title: "删除这条专注记录？"
        message: "删除后无法恢复。"
        confirmText: "删除"
        onConfirmed: vm.confirmDelete()
        onCancelled: vm.cancelDelete()
    }
}
