#include "UiHarness.h"
#include "ui/theme/Theme.h"

#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

// Only Tab, Shift+Tab, Space, Return and Escape: what a keyboard user has.
class KeyboardTest : public ::testing::Test {
protected:
    UiHarness ui;

    QQuickItem* focused() const { return ui.window()->activeFocusItem(); }
    QString focusedName() const { return focused() ? focused()->objectName() : QString(); }

    static bool inside(const QQuickItem* item, const QQuickItem* layer) {
        return item && layer && (item == layer || layer->isAncestorOf(item));
    }

    /// The open overlay that must hold the keyboard, innermost first; null when none is open.
    QQuickItem* openOverlay() const {
        for (const char* name : {"abandonDialog", "review.content", "endDialog"})
            if (ui.isShown(name))
                return ui.item(name);
        return nullptr;
    }

    /// Checks what every keyboard step must keep true: an open overlay holds the focus, and
    /// a focused control shows it (a ring, or a text field's focused outline).
    void expectFocusSound(const std::string& step) const {
        QQuickItem* item = focused();
        if (QQuickItem* layer = openOverlay()) {
            EXPECT_TRUE(inside(item, layer))
                << step << ": focus on '" << focusedName().toStdString() << "' behind '"
                << layer->objectName().toStdString() << "'";
        }
        if (item && item->activeFocusOnTab() && !item->inherits("QQuickTextInput")) {
            bool ringShown = false;
            const QList<QQuickItem*> rings = item->findChildren<QQuickItem*>("focusRing");
            for (QQuickItem* ring : rings)
                ringShown = ringShown || ring->isVisible();
            EXPECT_TRUE(ringShown)
                << step << ": no focus ring on '" << focusedName().toStdString() << "'";
        }
    }

    /// The control whose tip wants to show, if any: tips come on hover, never from the
    /// keyboard, where one would cover the controls next in line.
    static QString tipOpen(const QQuickItem* item) {
        if (QLatin1String(item->metaObject()->className())
                .startsWith(QLatin1String("QuillToolTip")) &&
            item->property("shown").toBool())
            return item->parentItem()->objectName();
        for (const QQuickItem* child : item->childItems())
            if (const QString found = tipOpen(child); !found.isEmpty())
                return found;
        return {};
    }

    void key(Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        QTest::keyClick(ui.window(), k, mods);
        ui.settle();
        expectFocusSound("after key " + std::to_string(k));
        if (k == Qt::Key_Tab || k == Qt::Key_Backtab)
            EXPECT_EQ(tipOpen(ui.window()->contentItem()).toStdString(), "")
                << "a tip opened by Tab";
    }

    /// Tabs forward until the named control has the focus; false if it never comes.
    bool tabTo(const QString& name) {
        for (int i = 0; i < 80; ++i) {
            if (focusedName() == name)
                return true;
            key(Qt::Key_Tab);
        }
        ADD_FAILURE() << "Tab never reached " << name.toStdString();
        return false;
    }

    void press(const QString& name) {
        if (tabTo(name))
            key(Qt::Key_Space);
    }

    /// Walks a full lap each way; the focus must stay inside the open overlay throughout.
    void walkAround(int steps) {
        for (int i = 0; i < steps; ++i)
            key(Qt::Key_Tab);
        for (int i = 0; i < steps; ++i)
            key(Qt::Key_Backtab, Qt::ShiftModifier);
    }

    void startRound() {
        ui.fakes.random->script.push_back(3600); // no reminder in these rounds
        press("focus.primary");
        ASSERT_EQ(ui.store().phase(), SessionPhase::focusing);
        ui.advance(120'000);
    }
};

TEST_F(KeyboardTest, AWholeRoundFromStartToSavedReview) {
    startRound();
    press("focus.signal.wander");
    press("focus.primary");
    EXPECT_EQ(ui.store().phase(), SessionPhase::paused);

    press("focus.end");
    ASSERT_TRUE(ui.isShown("endDialog.panel"));
    // The dialog takes the focus on its main choice; nothing behind it hears Tab or Space.
    EXPECT_EQ(focusedName(), "endDialog.review");
    walkAround(6);
    EXPECT_EQ(ui.store().currentEventCount(), 2); // wander, pause, and nothing more

    press("endDialog.review");
    ASSERT_TRUE(ui.isShown("review.save"));
    EXPECT_TRUE(inside(focused(), ui.item("review.content")));
    walkAround(16);
    // The review sheet ignores Escape.
    key(Qt::Key_Escape);
    EXPECT_TRUE(ui.isShown("review.save"));

    press("review.focus.5");
    press("review.energy.2");
    tabTo("review.note");
    ui.typeText("calm");
    press("review.save");

    ASSERT_EQ(ui.store().sessionCount(), 1);
    const StudySession saved = ui.store().sessions().first();
    EXPECT_EQ(saved.focusRating, 5);
    EXPECT_EQ(saved.endEnergy, 2);
    EXPECT_EQ(saved.note, "calm");
    EXPECT_EQ(saved.mindWanderCount(), 1);
    EXPECT_FALSE(ui.isShown("review.save"));
    // The focus is back in the window, and Tab walks it again.
    ASSERT_NE(focused(), nullptr);
    press("focus.primary");
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
}

TEST_F(KeyboardTest, ReturnPressesAndTheFocusIsAlwaysSomewhereInSight) {
    // The window opens with a visible focus: the first key already does something.
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focusedName(), "sidebar.section.focus");
    expectFocusSound("at launch");

    // Tab down to the last ambient tile, below the fold: the page follows the focus.
    tabTo("ambient.tile.brownNoise.toggle");
    QQuickItem* page = ui.item("focus.scroll");
    const QRectF seen = focused()->mapRectToItem(page, focused()->boundingRect());
    EXPECT_GE(seen.top(), 0);
    EXPECT_LE(seen.bottom(), page->height());

    ui.fakes.random->script.push_back(3600);
    tabTo("focus.primary");
    key(Qt::Key_Return);
    ASSERT_EQ(ui.store().phase(), SessionPhase::focusing);
    ui.advance(120'000);
    tabTo("focus.end");
    key(Qt::Key_Return);
    ASSERT_EQ(focusedName(), "endDialog.review");
    key(Qt::Key_Enter);
    ASSERT_TRUE(ui.isShown("review.save"));
    // The keyboard starts on the rating shown, so Space keeps it.
    const int shown = ui.item("review.focus")->property("value").toInt();
    EXPECT_EQ(focusedName().toStdString(), "review.focus." + std::to_string(shown));
}

TEST_F(KeyboardTest, AbandoningIsConfirmedAndEscapeStepsBackOneLayer) {
    startRound();
    press("focus.end");
    // Escape on the end dialog means continue, and the focus returns to the end button.
    key(Qt::Key_Escape);
    EXPECT_FALSE(ui.isShown("endDialog"));
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
    EXPECT_EQ(focusedName(), "focus.end");

    key(Qt::Key_Space);
    press("endDialog.review");
    press("review.abandon");
    ASSERT_TRUE(ui.isShown("abandonDialog.panel"));
    // The safe answer has the focus; Tab then Space cannot reach "保存复盘" underneath.
    EXPECT_EQ(focusedName(), "abandonDialog.cancel");
    walkAround(5);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab); // round the dialog's two buttons and back
    EXPECT_EQ(focusedName(), "abandonDialog.cancel");
    key(Qt::Key_Space);
    EXPECT_FALSE(ui.isShown("abandonDialog"));
    EXPECT_TRUE(ui.store().showCompletionSheet());
    EXPECT_EQ(ui.store().sessionCount(), 0);
    // Closing gives the focus back to the button that opened it; Escape closes it as well.
    EXPECT_EQ(focusedName(), "review.abandon");
    key(Qt::Key_Space);
    ASSERT_TRUE(ui.isShown("abandonDialog.panel"));
    key(Qt::Key_Escape);
    EXPECT_FALSE(ui.isShown("abandonDialog"));
    EXPECT_TRUE(ui.isShown("review.save"));
    EXPECT_EQ(focusedName(), "review.abandon");

    key(Qt::Key_Space);
    press("abandonDialog.confirm");
    EXPECT_EQ(ui.store().phase(), SessionPhase::idle);
    EXPECT_EQ(ui.store().sessionCount(), 0);
    EXPECT_FALSE(ui.isShown("review.save"));
}

TEST_F(KeyboardTest, TheSettingsScreenShowsItsFocusWithoutCoveringTips) {
    ui.store().editSettings(
        [](AppSettings& settings) { settings.taskNames = QList<QString>{QStringLiteral("写作")}; });
    press("sidebar.section.settings");
    tabTo("settings.tasks.row.0.remove");
}

TEST_F(KeyboardTest, TheDurationFieldShowsTheLengthTheStoreKeeps) {
    for (const auto& [typed, shown] : {std::pair{"0", "1"}, {"2000", "1440"}, {"35", "35"}}) {
        tabTo("control.durationField");
        QTest::keyClick(ui.window(), Qt::Key_A, Qt::ControlModifier);
        ui.typeText(QString::fromLatin1(typed));
        key(Qt::Key_Return);
        EXPECT_EQ(ui.text("control.durationField"), shown) << typed;
        EXPECT_EQ(QString::number(ui.store().settings().selectedDurationMinutes), shown) << typed;
        key(Qt::Key_Tab);
    }
    // Emptied and left, it shows the stored length again.
    tabTo("control.durationField");
    QTest::keyClick(ui.window(), Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Backspace);
    key(Qt::Key_Tab);
    EXPECT_EQ(ui.text("control.durationField"), "35");
}

TEST_F(KeyboardTest, ToastTextReadsOnItsBackgroundInBothAppearances) {
    for (bool dark : {true, false}) {
        if (!dark)
            press("sidebar.appearance");
        ASSERT_EQ(ui.store().settings().effectiveAppearance() == AppearanceMode::dark, dark);
        ui.fakes.random->script.push_back(3600);
        press("focus.primary"); // shows the start toast
        ASSERT_TRUE(ui.isShown("toast"));
        const QColor behind = ui.window()->color();
        const QColor fill =
            Theme::over(ui.item("toast")->property("color").value<QColor>(), behind);
        const QColor text = ui.item("toast.text")->property("color").value<QColor>();
        EXPECT_GE(Theme::contrast(Theme::over(text, fill), fill), 4.5) << dark;
        press("focus.end");
        press("endDialog.abandon");
    }
}

} // namespace
