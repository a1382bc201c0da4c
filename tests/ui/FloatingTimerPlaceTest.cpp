#include "ui/shell/FloatingTimerPlace.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;

namespace {

const QSize kPanel(264, 116);
const QList<QRect> kScreens{QRect(0, 0, 1920, 1050), QRect(1920, 0, 1280, 1024)};
const QPoint kCorner(1920 - 264 - 24, 24); // top right of the primary screen

class FloatingTimerPlaceTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString file() const { return dir.path() + "/state/Quillmere/floating-timer-position"; }
    void writeFile(const QByteArray& bytes) {
        FloatingTimerPlace(file()).remember({1, 1}); // makes the folders
        QFile f(file());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
};

TEST_F(FloatingTimerPlaceTest, ThePlaceLeftIsKeptForTheSessionAndTheNextStart) {
    FloatingTimerPlace place(file());
    EXPECT_EQ(place.position(kPanel, kScreens), kCorner) << "nothing remembered yet";
    place.remember({2400, 700}); // on the second screen
    EXPECT_EQ(place.position(kPanel, kScreens), QPoint(2400, 700));
    EXPECT_EQ(FloatingTimerPlace(file()).position(kPanel, kScreens), QPoint(2400, 700));
}

TEST_F(FloatingTimerPlaceTest, APlaceOffEveryScreenFallsBackToTheCorner) {
    FloatingTimerPlace place(file());
    place.remember({2400, 700});
    const QList<QRect> laptopOnly{kScreens.first()}; // the second screen was unplugged
    EXPECT_EQ(place.position(kPanel, laptopOnly), kCorner);
    place.remember({1900, 500}); // only a sliver still on the screen
    EXPECT_EQ(place.position(kPanel, laptopOnly), kCorner);
    place.remember({-200, 300}); // most of it off the left edge, enough still on it
    EXPECT_EQ(place.position(kPanel, laptopOnly), QPoint(-200, 300));
}

TEST_F(FloatingTimerPlaceTest, ABrokenOrUnwritableStateFileOnlyCostsThePlace) {
    for (const QByteArray bytes : {QByteArray("garbage"), QByteArray("12"), QByteArray(""),
                                   QByteArray("1 2 3"), QByteArray(200, '7')}) {
        writeFile(bytes);
        EXPECT_EQ(FloatingTimerPlace(file()).position(kPanel, kScreens), kCorner) << bytes.data();
    }
    FloatingTimerPlace nowhere(dir.path() + "/not-a-folder/x");
    QFile blocker(dir.path() + "/not-a-folder");
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly)); // a file where the folder should be
    nowhere.remember({300, 300});
    EXPECT_EQ(nowhere.position(kPanel, kScreens), QPoint(300, 300)) << "kept for the session";
}

TEST(FloatingTimerPlaceDefaultTest, TheFileLivesInTheStateHome) {
    const QByteArray saved = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", "/home/u/.state");
    EXPECT_EQ(FloatingTimerPlace::defaultFilePath(),
              "/home/u/.state/Quillmere/floating-timer-position");
    qputenv("XDG_STATE_HOME", "relative/path"); // not absolute: ignored, as the base dirs say
    EXPECT_TRUE(FloatingTimerPlace::defaultFilePath().endsWith(
        "/.local/state/Quillmere/floating-timer-position"));
    qputenv("XDG_STATE_HOME", saved);
}

} // namespace
