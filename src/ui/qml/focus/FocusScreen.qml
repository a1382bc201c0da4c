import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Quillmere

// The "专注" section: heading and today's pills, the timer with its signals or hint on the
// left, the round's design and the ambient sounds on the right.
Item {
    id: screen
    required property ViewModels models

    readonly property FocusViewModel vm: models.focus
    Binding { target: screen.vm; property: "window"; value: screen.Window.window }
    readonly property ControlCardViewModel controls: models.controlCard

    Flickable {
        id: flick
        KeepFocusInView { flickable: flick }
        objectName: "focus.scroll"
        anchors.fill: parent
        contentWidth: width
        contentHeight: content.height + 34 + 30
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: QuillScrollBar {}

        Item {
            id: content
            x: 30
            y: 34
            width: flick.width - 60
            height: columns.y + columns.height

            Item {
                id: header
                width: parent.width
                height: Math.max(heading.implicitHeight, pills.implicitHeight)

                SectionHeading {
                    id: heading
                    objectName: "focus.heading"
                    anchors.left: parent.left
                    anchors.bottom: parent.bottom
                    eyebrow: vm.greeting
                    title: vm.title
                    subtitle: vm.subtitle
                }
                Row {
                    id: pills
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 2
                    spacing: 18
                    MetricPill {
                        objectName: "focus.pill.minutes"
                        symbol: "clock.fill"
                        value: vm.todayMinutesText
                        label: "今日专注"
                        tint: Theme.mint
                    }
                    MetricPill {
                        objectName: "focus.pill.wander"
                        symbol: "scope"
                        value: vm.todayWanderText
                        label: "今日走神"
                        tint: Theme.coral
                    }
                    MetricPill {
                        objectName: "focus.pill.streak"
                        symbol: "flame.fill"
                        value: vm.streakText
                        label: "连续记录"
                        tint: Theme.amber
                    }
                }
            }

            Item {
                id: columns
                y: header.height + 22
                width: parent.width
                height: Math.max(left.height, right.height)

                Column {
                    id: left
                    width: parent.width - right.width - 20
                    spacing: 20

                    TimerCard {
                        width: parent.width
                        vm: screen.vm
                    }
                    SignalsCard {
                        objectName: "focus.signals"
                        width: parent.width
                        visible: vm.active
                        vm: screen.vm
                    }
                    TrainingHint {
                        objectName: "focus.hint"
                        width: parent.width
                        visible: !vm.active
                        vm: screen.vm
                    }
                }

                Column {
                    id: right
                    x: left.width + 20
                    width: 350
                    spacing: 20

                    ControlCard {
                        width: parent.width
                        controls: screen.controls
                    }
                    AmbientSoundsCard {
                        width: parent.width
                        models: screen.models
                    }
                }
            }
        }
    }
}
