import QtQuick
import Quillmere

// The progressive plan: the capacity ring around the suggested length, the three rules and
// the button that takes the suggestion for the next round.
QuillCard {
    id: card
    required property InsightsViewModel vm
    padding: 20
    implicitHeight: column.implicitHeight + 2 * padding

    Column {
        id: column
        width: parent.width
        spacing: 18

        InsightCardHeader {
            width: parent.width
            title: "渐进训练"
            subtitle: "下一阶段"
            symbol: "figure.stairs"
        }

        Item {
            width: parent.width
            height: 128
            Canvas {
                id: ring
                objectName: "insights.plan.ring"
                property real progress: card.vm.ringProgress
                property color trackColor: Theme.palette.neutralFill(0.07)
                property color arcColor: Theme.mint
                anchors.centerIn: parent
                width: 128
                height: 128
                onProgressChanged: requestPaint()
                onTrackColorChanged: requestPaint()
                onArcColorChanged: requestPaint()
                onPaint: {
                    const ctx = getContext("2d");
                    ctx.reset();
                    const line = 11;
                    const r = width / 2 - line / 2;
                    ctx.lineWidth = line;
                    ctx.strokeStyle = trackColor;
                    ctx.beginPath();
                    ctx.arc(width / 2, height / 2, r, 0, 2 * Math.PI, false);
                    ctx.stroke();
                    if (progress <= 0)
                        return;
                    ctx.lineCap = progress >= 1 ? "butt" : "round";
                    ctx.strokeStyle = arcColor;
                    ctx.beginPath();
                    ctx.arc(width / 2, height / 2, r, -Math.PI / 2,
                            -Math.PI / 2 + 2 * Math.PI * Math.min(progress, 1), false);
                    ctx.stroke();
                }
            }
            Column {
                anchors.centerIn: ring
                QuillText {
                    objectName: "insights.plan.minutes"
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: card.vm.recommendedValue
                    font.pixelSize: 31
                    font.weight: Font.Bold
                    color: Theme.primaryText
                }
                QuillText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: "分钟"
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
            }
        }

        Column {
            width: parent.width
            spacing: 9
            Repeater {
                model: ["先稳定完成建议时长", "连续 3 轮：评分 ≥ 4、走神 ≤ 1", "下一轮增加 5 分钟"]
                Row {
                    spacing: 9
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 17
                        height: 17
                        radius: 8.5
                        color: Theme.mint
                        QuillText {
                            anchors.centerIn: parent
                            text: index + 1
                            font.pixelSize: 10
                            font.weight: Font.Bold
                            color: Theme.onAccent
                        }
                    }
                    QuillText {
                        anchors.verticalCenter: parent.verticalCenter
                        width: column.width - 26
                        text: modelData
                        font.pixelSize: 12
                        color: Theme.primaryText
                        wrapMode: Text.WordWrap
                    }
                }
            }
        }

        QuillSecondaryButton {
            objectName: "insights.plan.adopt"
            width: parent.width
            text: "把建议用于下一轮"
            onClicked: card.vm.adoptRecommendation()
        }
    }
}
