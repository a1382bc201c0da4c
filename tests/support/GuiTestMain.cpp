#include <QApplication>
#include <gtest/gtest.h>
#include <ctime>

// UI tests run a real Qt window on the offscreen platform unless told otherwise.
int main(int argc, char** argv) {
    // Calendar tests are written for a fixed zone east of UTC, however they are started.
    if (qEnvironmentVariableIsEmpty("TZ"))
        qputenv("TZ", "Asia/Shanghai");
    tzset();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
