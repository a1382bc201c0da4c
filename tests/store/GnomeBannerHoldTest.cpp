// GNOME's banner switch held for a round: only an "on" is turned off, a mark on disk says so
// before the switch is touched, and whoever finds the mark turns banners back on unless the
// user did meanwhile.
#include "store/focusguard/GnomeBannerHold.h"
#include "music/EventLoopWait.h"
#include "store/focusguard/GsettingsBannerSwitch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

/// The switch in memory; answers at once, or when flushed while `deferred`.
class FakeBannerSwitch final : public BannerSwitch {
public:
    explicit FakeBannerSwitch(QString mark) : m_mark(std::move(mark)) {}
    void read(std::function<void(std::optional<bool>)> done) override {
        answer([this, done] { done(value); });
    }
    void write(bool on, std::function<void(bool)> done) override {
        answer([this, on, done] {
            markedWhenTurnedOff = markedWhenTurnedOff || (!on && QFile::exists(m_mark));
            if (value) {
                value = on;
                ++writes;
            }
            done(value.has_value());
        });
    }
    void restoreOnExit(const QString& markFile) override {
        if (value == false) {
            value = true;
            ++writes;
        }
        QFile::remove(markFile);
    }
    void flush() {
        while (!pending.empty()) {
            auto next = std::move(pending.front());
            pending.pop_front();
            next();
        }
    }
    std::optional<bool> value = true;
    int writes = 0;
    bool markedWhenTurnedOff = false;
    bool deferred = false;
    std::deque<std::function<void()>> pending;

private:
    void answer(std::function<void()> f) {
        if (deferred)
            pending.push_back(std::move(f));
        else
            f();
    }
    QString m_mark;
};

class GnomeBannerHoldTest : public ::testing::Test {
protected:
    std::unique_ptr<GnomeBannerHold> makeHold() {
        return std::make_unique<GnomeBannerHold>(banners, mark);
    }
    bool marked() const { return QFile::exists(mark); }
    QTemporaryDir dir;
    QString mark = dir.filePath(QStringLiteral("state/banners-held"));
    std::shared_ptr<FakeBannerSwitch> banners = std::make_shared<FakeBannerSwitch>(mark);
};

TEST_F(GnomeBannerHoldTest, BannersGoOffForTheRoundAndComeBackAfter) {
    auto hold = makeHold();
    hold->setHeld(true);
    EXPECT_EQ(banners->value, false);
    EXPECT_TRUE(marked());
    EXPECT_TRUE(banners->markedWhenTurnedOff) << "the mark is on disk before the switch moves";
    hold->setHeld(false);
    EXPECT_EQ(banners->value, true);
    EXPECT_FALSE(marked());
}

TEST_F(GnomeBannerHoldTest, TheUsersOwnChoiceIsNeverOverridden) {
    banners->value = false; // the user's own Do Not Disturb
    auto hold = makeHold();
    hold->setHeld(true);
    hold->setHeld(false);
    EXPECT_EQ(banners->value, false);
    EXPECT_EQ(banners->writes, 0);
    EXPECT_FALSE(marked());

    banners->value = true;
    hold->setHeld(true);
    banners->value = true; // the user turned banners back on during the round
    hold->setHeld(false);
    EXPECT_EQ(banners->writes, 1);
    EXPECT_FALSE(marked());

    banners->value = std::nullopt; // no such setting: nothing to hold, nothing marked
    hold->setHeld(true);
    EXPECT_FALSE(marked());
}

TEST_F(GnomeBannerHoldTest, QuittingOrACrashMidRoundNeverLeavesBannersOff) {
    auto hold = makeHold();
    hold->setHeld(true);
    hold.reset(); // quitting: a process of its own puts banners back
    EXPECT_EQ(banners->value, true);
    EXPECT_FALSE(marked());

    hold = makeHold();
    hold->setHeld(true);
    ASSERT_TRUE(marked());
    // A crash leaves the mark and the switch off; the next start finds them. Where the
    // switch cannot be read then (another desktop), the mark waits for a start that can.
    auto afterCrash = std::make_shared<FakeBannerSwitch>(mark);
    afterCrash->value = std::nullopt;
    GnomeBannerHold elsewhere(afterCrash, mark);
    EXPECT_TRUE(marked());
    afterCrash->value = false;
    GnomeBannerHold restarted(afterCrash, mark);
    EXPECT_EQ(afterCrash->value, true);
    EXPECT_FALSE(marked());
}

TEST_F(GnomeBannerHoldTest, RequestsOvertakingEachOtherEndAsTheLastOneAsked) {
    banners->deferred = true;
    auto hold = makeHold();
    hold->setHeld(true);
    hold->setHeld(false);
    banners->flush();
    EXPECT_EQ(banners->value, true);
    EXPECT_FALSE(marked());

    hold->setHeld(true);
    hold->setHeld(false);
    hold->setHeld(true);
    banners->flush();
    EXPECT_EQ(banners->value, false);
    EXPECT_TRUE(marked());
    hold->setHeld(false);
    banners->flush();
    EXPECT_EQ(banners->value, true);
}

TEST_F(GnomeBannerHoldTest, WithoutAPlaceForTheMarkBannersStayOn) {
    QDir().mkpath(mark); // a folder where the mark would go
    auto hold = makeHold();
    hold->setHeld(true);
    EXPECT_EQ(banners->value, true);
    EXPECT_EQ(banners->writes, 0);
}

TEST(GsettingsBannerSwitch, ReadsWritesAndRestoresThroughTheTool) {
    // A stand-in for gsettings that keeps the one value in a file beside it.
    QTemporaryDir dir;
    const QString tool = dir.filePath(QStringLiteral("gsettings"));
    QFile script(tool);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\n"
                 "[ \"$2 $3\" = \"org.gnome.desktop.notifications show-banners\" ] || exit 1\n"
                 "f=\"$(dirname \"$0\")/value\"\n"
                 "case \"$1\" in get) cat \"$f\";; set) echo \"$4\" > \"$f\";; *) exit 1;; esac\n");
    script.close();
    script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QFile value(dir.filePath(QStringLiteral("value")));
    ASSERT_TRUE(value.open(QIODevice::WriteOnly));
    value.write("true\n");
    value.close();
    const auto stored = [&] {
        QFile f(value.fileName());
        return f.open(QIODevice::ReadOnly) ? f.readAll().trimmed() : QByteArray();
    };

    GsettingsBannerSwitch banners(tool);
    std::optional<std::optional<bool>> read;
    banners.read([&](std::optional<bool> v) { read = v; });
    ASSERT_TRUE(waitUntil([&] { return read.has_value(); }));
    EXPECT_EQ(*read, true);
    std::optional<bool> written;
    banners.write(false, [&](bool ok) { written = ok; });
    ASSERT_TRUE(waitUntil([&] { return written.has_value(); }));
    EXPECT_TRUE(*written);
    EXPECT_EQ(stored(), "false");

    const QString mark = dir.filePath(QStringLiteral("mark"));
    QFile(mark).open(QIODevice::WriteOnly);
    banners.restoreOnExit(mark);
    ASSERT_TRUE(waitUntil([&] { return !QFile::exists(mark); }));
    EXPECT_EQ(stored(), "true");

    GsettingsBannerSwitch missing(dir.filePath(QStringLiteral("no-such-tool")));
    read.reset();
    missing.read([&](std::optional<bool> v) { read = v; });
    ASSERT_TRUE(waitUntil([&] { return read.has_value(); }));
    EXPECT_EQ(*read, std::nullopt);
}

} // namespace
} // namespace quill::test
