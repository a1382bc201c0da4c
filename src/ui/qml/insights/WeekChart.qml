import QtQuick
import QtCharts
import Quillmere

// Net focus minutes of the last seven days: the chart draws the axes and grid, the bars
// are drawn over its plot area so they can have rounded corners.
Item {
    id: root
    property var bars: []
    property int axisMax: 4
    property int tickCount: 5
    Accessible.role: Accessible.Chart
    Accessible.name: "最近 7 天，日期与分钟：" + bars.map(b => b.accessible).join("，")

    ChartView {
        id: chart
        anchors.fill: parent
        antialiasing: true
        backgroundColor: "transparent"
        plotAreaColor: "transparent"
        backgroundRoundness: 0
        dropShadowEnabled: false
        legend.visible: false
        margins.left: 0
        margins.right: 0
        margins.top: 4
        margins.bottom: 0

        BarSeries {
            axisX: BarCategoryAxis {
                categories: root.bars.map(b => b.label)
                labelsColor: Theme.secondaryText
                labelsFont.pixelSize: 10
                gridLineColor: Theme.hairline
                color: Theme.hairline
            }
            axisY: ValueAxis {
                min: 0
                max: root.axisMax
                tickCount: root.tickCount
                labelFormat: "%d"
                labelsColor: Theme.secondaryText
                labelsFont.pixelSize: 10
                gridLineColor: Theme.hairline
                color: "transparent"
                minorGridVisible: false
            }
            BarSet {
                values: root.bars.map(() => 0)
                color: "transparent"
                borderColor: "transparent"
            }
        }
    }

    Repeater {
        model: root.bars
        Rectangle {
            objectName: "insights.week.bar." + index
            readonly property real slot: chart.plotArea.width / Math.max(root.bars.length, 1)
            readonly property real barHeight: chart.plotArea.height * modelData.minutes / Math.max(root.axisMax, 1)
            x: chart.x + chart.plotArea.x + slot * (index + 0.5) - width / 2
            y: chart.y + chart.plotArea.y + chart.plotArea.height - height
            width: Math.min(slot * 0.56, 34)
            height: barHeight
            visible: barHeight > 0
            radius: 6
            color: Theme.mint
        }
    }
}
