#include "UiHarness.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class AmbientCardTest : public ::testing::Test {
protected:
    UiHarness ui;
    void SetUp() override {
        // The card sits below the fold: scroll the screen to its end.
        QQuickItem* scroll = ui.item("focus.scroll");
        scroll->setProperty("contentY",
                            scroll->property("contentHeight").toReal() - scroll->height());
        ui.settle();
    }
    bool selected(const char* raw) {
        return ui.store().isAmbientSelected(*ambientSoundFromRaw(QString::fromLatin1(raw)));
    }
    void dragAcross(const QString& name) {
        QQuickItem* slider = ui.item(name);
        const QPoint from = slider->mapToScene(QPointF(2, slider->height() / 2)).toPoint();
        const QPoint to =
            slider->mapToScene(QPointF(slider->width() * 0.3, slider->height() / 2)).toPoint();
        QTest::mousePress(ui.window(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(ui.window(), (from + to) / 2);
        QTest::mouseMove(ui.window(), to);
        QTest::mouseRelease(ui.window(), Qt::LeftButton, Qt::NoModifier, to);
        ui.settle();
    }
};

TEST_F(AmbientCardTest, NothingSelectedInvitesDisablesEverySliderAndPlaysRain) {
    EXPECT_EQ(ui.text("ambient.status"), "点选下面的声音即可试听，可以叠加多种一起放。");
    for (const char* raw : {"rain", "waves", "brownNoise"}) {
        QQuickItem* slider = ui.item(QStringLiteral("ambient.tile.%1.volume").arg(raw));
        EXPECT_FALSE(slider->isEnabled()) << raw;
        EXPECT_DOUBLE_EQ(slider->opacity(), 0.35) << raw;
        EXPECT_DOUBLE_EQ(slider->property("value").toDouble(), 0.7) << raw; // the default volume
    }
    EXPECT_EQ(ui.text("ambient.play"), "播放");
    ui.click("ambient.play");
    EXPECT_TRUE(selected("rain"));
    EXPECT_TRUE(ui.store().isAmbientPlaying());
    EXPECT_EQ(ui.text("ambient.status"), "正在播放：雨声");
}

TEST_F(AmbientCardTest, ClickingATileAddsItAndPlays) {
    ui.click("ambient.tile.brownNoise.toggle");
    ui.click("ambient.tile.crickets.toggle");
    EXPECT_TRUE(selected("brownNoise"));
    EXPECT_TRUE(selected("crickets"));
    EXPECT_TRUE(ui.store().isAmbientPlaying());
    EXPECT_EQ(ui.text("ambient.status"), "正在播放：棕噪音 + 虫鸣");
    EXPECT_EQ(ui.text("ambient.play"), "暂停");
    EXPECT_TRUE(ui.isShown("ambient.tile.crickets.check"));
    EXPECT_TRUE(ui.item("ambient.tile.crickets.volume")->isEnabled());

    // The waveform pulses only while someone can see it.
    QQuickItem* wave = ui.item("ambient.waveform");
    EXPECT_TRUE(wave->property("pulsing").toBool());
    ui.window()->hide();
    EXPECT_FALSE(wave->property("pulsing").toBool()) << "hidden";
    ui.window()->show();
    QTRY_VERIFY_WITH_TIMEOUT(wave->property("pulsing").toBool(), 5000);

    ui.click("ambient.play");
    EXPECT_FALSE(ui.store().isAmbientPlaying());
    EXPECT_EQ(ui.text("ambient.play"), "播放"); // follows playing, not the selection
    EXPECT_EQ(ui.text("ambient.status"), "已选：棕噪音 + 虫鸣");

    ui.click("ambient.tile.crickets.toggle");
    EXPECT_FALSE(selected("crickets"));
    EXPECT_FALSE(ui.isShown("ambient.tile.crickets.check"));
}

TEST_F(AmbientCardTest, SlidersSetVolumesWithoutTogglingAndTheSwitchWritesItsSetting) {
    ui.click("ambient.tile.rain.toggle");
    ASSERT_TRUE(selected("rain"));
    dragAcross("ambient.tile.rain.volume");
    EXPECT_TRUE(selected("rain"));
    const double volume = ui.store().settings().ambientVolume(AmbientSound::rain);
    EXPECT_LT(volume, 0.5);
    EXPECT_GT(volume, 0.1);
    ui.click("ambient.follow");
    EXPECT_EQ(ui.store().settings().ambientFollowsFocus, false);
    dragAcross("ambient.master");
    EXPECT_LT(*ui.store().settings().ambientMasterVolume, 0.5);
}

} // namespace
