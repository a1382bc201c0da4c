#include "InsightScenes.h"

#include "store/AppStore.h"
#include "ui/UiHarness.h"

#include <QQuickItem>
#include <QTest>

namespace quill::screenshots {

namespace {
using test::UiHarness;

void emptyHistory(UiHarness& ui) {
    ui.store().clearHistory();
    ui.advance(3'500); // past the toast that confirms it
}

// Nine more tasks than the demo's, through real rounds: one with a long name and a long note.
void manyTasks(UiHarness& ui) {
    const QString longName = QStringLiteral("一个名字特别长的任务，用来看表格和卡片怎样收住它");
    for (int i = 0; i < 9; ++i) {
        const QString name = i == 0 ? longName : QStringLiteral("任务 %1").arg(i + 1);
        ui.store().addTask(name);
        ui.store().selectTask(name);
        ui.fakes.random->script.push_back(3600);
        ui.store().startSession();
        ui.advance(60'000 * (9 - i) + 250);
        ui.store().endSessionForReview();
        ui.store().saveCompletion(
            1 + i % 5, 3,
            i == 8
                ? QStringLiteral("前半段很顺，后半段被消息打断了两次；下次开始前先把手机放到另一个"
                                 "房间，再把要查的资料提前准备好，这样就不用中途切出去找东西。")
                : QString());
    }
    ui.advance(3'500);
}

void scrollToEnd(UiHarness& ui, const char* name) {
    ui.settle();
    QQuickItem* scroll = ui.item(QString::fromLatin1(name));
    if (!scroll)
        return;
    const qreal end = scroll->property("contentHeight").toReal() +
                      scroll->property("originY").toReal() - scroll->height() +
                      scroll->property("bottomMargin").toReal();
    scroll->setProperty("contentY", std::max<qreal>(end, 0));
}

// Charts are built after the screen's first frame; pictures wait for them.
void waitForCharts(UiHarness& ui) {
    for (int i = 0; i < 100; ++i) {
        ui.settle();
        const bool trendDue = ui.store().sessionCount() > 0;
        if (ui.item(QStringLiteral("insights.week.chart")) &&
            (!trendDue || ui.item(QStringLiteral("insights.trend.chart"))))
            return;
    }
}

SceneRecorder::Scene section(const char* key, std::function<void(UiHarness&)> before = {},
                             std::function<void(UiHarness&)> after = {}) {
    return [key, before, after](UiHarness& ui) -> QQuickWindow* {
        if (before)
            before(ui);
        ui.click(QStringLiteral("sidebar.section.") + QString::fromLatin1(key));
        if (QByteArrayView(key) == "insights")
            waitForCharts(ui);
        if (after)
            after(ui);
        return nullptr;
    };
}
} // namespace

QList<QPair<QString, SceneRecorder::Scene>> insightScenes() {
    return {
        {QStringLiteral("insights"), section("insights")},
        {QStringLiteral("insights-lower"),
         section("insights", {}, [](UiHarness& ui) { scrollToEnd(ui, "insights.scroll"); })},
        {QStringLiteral("insights-empty"), section("insights", emptyHistory)},
        {QStringLiteral("insights-many-tasks"),
         section("insights", manyTasks, [](UiHarness& ui) { scrollToEnd(ui, "insights.scroll"); })},
        {QStringLiteral("history"), section("history")},
        {QStringLiteral("history-empty"), section("history", emptyHistory)},
        {QStringLiteral("history-long-texts"), section("history", manyTasks)},
        {QStringLiteral("history-menu"),
         section("history", {},
                 [](UiHarness& ui) {
                     ui.settle();
                     QQuickItem* card = ui.item(QStringLiteral("history.card.1"));
                     if (!card)
                         return;
                     QTest::mouseClick(ui.window(), Qt::RightButton, {},
                                       card->mapToScene({120, 30}).toPoint());
                 })},
        {QStringLiteral("history-delete-confirmation"),
         section("history", {},
                 [](UiHarness& ui) {
                     ui.item(QStringLiteral("history.list"))->forceActiveFocus();
                     ui.pressKey(Qt::Key_Delete);
                 })},
    };
}

} // namespace quill::screenshots
