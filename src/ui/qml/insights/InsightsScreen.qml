import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The "洞察" section: headline figures, the last seven days, the training plan, focus per
// task, the quality trend and how to read them, in one scrolling page.
Item {
    id: screen
    required property ViewModels models

    readonly property InsightsViewModel vm: models.insights

    Flickable {
        id: flick
        KeepFocusInView { flickable: flick }
        objectName: "insights.scroll"
        anchors.fill: parent
        contentWidth: width
        contentHeight: content.height + 34 + 30
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        ScrollBar.vertical: QuillScrollBar {}

        Column {
            id: content
            x: 30
            y: 34
            width: flick.width - 60
            spacing: 18

            Item {
                width: parent.width
                height: Math.max(heading.implicitHeight, pill.implicitHeight)
                SectionHeading {
                    id: heading
                    objectName: "insights.heading"
                    anchors.left: parent.left
                    anchors.bottom: parent.bottom
                    eyebrow: "Attention Lab"
                    title: "看见你的注意力节律"
                    subtitle: "用趋势做调整，不用某一次状态定义自己。"
                }
                Rectangle {
                    id: pill
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 2
                    implicitHeight: 26
                    width: pillText.implicitWidth + 24
                    height: implicitHeight
                    radius: height / 2
                    color: Theme.palette.neutralFill(0.05)
                    border.width: 1
                    border.color: Theme.hairline
                    QuillText {
                        id: pillText
                        objectName: "insights.sample"
                        anchors.centerIn: parent
                        text: vm.sampleText
                        font.pixelSize: 11
                        font.weight: Font.Medium
                        color: Theme.secondaryText
                    }
                }
            }

            Row {
                id: tiles
                width: parent.width
                spacing: 14
                Repeater {
                    model: vm.tiles
                    InsightTile {
                        objectName: "insights.tile." + index
                        width: (tiles.width - 3 * tiles.spacing) / 4
                        symbol: modelData.symbol
                        value: modelData.value
                        label: modelData.label
                        footnote: modelData.footnote
                        tint: Theme.palette.tint(modelData.tint)
                    }
                }
            }

            Row {
                width: parent.width
                spacing: 14
                QuillCard {
                    id: weekCard
                    objectName: "insights.week"
                    width: parent.width - planCard.width - parent.spacing
                    height: Math.max(implicitHeight, planCard.implicitHeight)
                    padding: 20
                    implicitHeight: weekColumn.implicitHeight + 2 * padding
                    Column {
                        id: weekColumn
                        width: parent.width
                        spacing: 18
                        InsightCardHeader {
                            width: parent.width
                            title: "最近 7 天"
                            subtitle: "净专注分钟"
                            symbol: "calendar"
                        }
                        // Charts are built after the page's first frame: the chart module is
                        // the slowest part of the screen to create.
                        Loader {
                            width: parent.width
                            height: 190
                            asynchronous: true
                            sourceComponent: WeekChart {
                                objectName: "insights.week.chart"
                                bars: vm.weekBars
                                axisMax: vm.weekAxisMax
                                tickCount: vm.weekTickCount
                            }
                        }
                    }
                }
                PlanCard {
                    id: planCard
                    objectName: "insights.plan"
                    width: 330
                    vm: screen.vm
                }
            }

            TaskBreakdownCard {
                objectName: "insights.tasks"
                width: parent.width
                vm: screen.vm
            }

            Row {
                width: parent.width
                spacing: 14
                QuillCard {
                    objectName: "insights.trend"
                    width: parent.width - guideCard.width - parent.spacing
                    height: Math.max(implicitHeight, guideCard.implicitHeight)
                    padding: 20
                    implicitHeight: trendColumn.implicitHeight + 2 * padding
                    Column {
                        id: trendColumn
                        width: parent.width
                        spacing: 18
                        InsightCardHeader {
                            width: parent.width
                            title: "专注质量趋势"
                            subtitle: "每轮复盘评分（1–5）"
                            symbol: "waveform.path.ecg"
                        }
                        InsightEmptyState {
                            objectName: "insights.trend.empty"
                            width: parent.width
                            height: 180
                            visible: vm.trendPoints.length === 0
                            symbol: "chart.line.uptrend.xyaxis"
                            symbolSize: 25
                            text: "完成第一轮后，这里会出现趋势"
                        }
                        Loader {
                            width: parent.width
                            height: 180
                            asynchronous: true
                            active: vm.trendPoints.length > 0
                            visible: active
                            sourceComponent: TrendChart {
                                objectName: "insights.trend.chart"
                                points: vm.trendPoints
                                axisMax: vm.trendAxisMax
                            }
                        }
                    }
                }
                ReadingGuideCard {
                    id: guideCard
                    objectName: "insights.guide"
                    width: 330
                }
            }
        }
    }
}
