import QtQuick
import QtCharts
import Quillmere

// Review ratings of the most recent rounds, oldest on the left: a smooth blue line through
// a point per round, ratings on a fixed 1–5 scale. Both axes reach half a step past the data, so
// the end points, ratings of 5 and the curve's overshoot are drawn whole, not cut at the plot's
// edge; ticks stay on whole numbers.
ChartView {
    id: chart
    property var points: []
    property int axisMax: 2
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
    Accessible.role: Accessible.Chart
    Accessible.name: "专注质量趋势，轮次与评分：" + points.map(p => p.x + "：" + p.y).join("，")

    onPointsChanged: fill()
    Component.onCompleted: fill()

    function fill() {
        line.clear();
        dots.clear();
        for (const p of points) {
            line.append(p.x, p.y);
            dots.append(p.x, p.y);
        }
    }

    ValueAxis {
        id: xAxis
        min: 0.5
        max: chart.axisMax + 0.5
        tickType: ValueAxis.TicksDynamic
        tickAnchor: 1
        tickInterval: 1
        labelFormat: "%d"
        labelsColor: Theme.secondaryText
        labelsFont.pixelSize: 10
        gridLineColor: Theme.hairline
        color: Theme.hairline
    }
    ValueAxis {
        id: yAxis
        min: 0.5
        max: 5.5
        tickType: ValueAxis.TicksDynamic
        tickAnchor: 1
        tickInterval: 1
        labelFormat: "%d"
        labelsColor: Theme.secondaryText
        labelsFont.pixelSize: 10
        gridLineColor: Theme.hairline
        color: "transparent"
    }
    SplineSeries {
        id: line
        axisX: xAxis
        axisY: yAxis
        color: Theme.blue
        width: 2.5
    }
    ScatterSeries {
        id: dots
        axisX: xAxis
        axisY: yAxis
        color: Theme.blue
        borderColor: Theme.blue
        markerShape: ScatterSeries.MarkerShapeCircle
        markerSize: 7
    }
}
