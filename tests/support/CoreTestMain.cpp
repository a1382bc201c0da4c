#include <QCoreApplication>
#include <gtest/gtest.h>
#include <ctime>

// Core tests need an event loop object for QObject machinery, never a display.
int main(int argc, char** argv) {
    // Calendar tests are written for a fixed zone east of UTC, however they are started.
    if (qEnvironmentVariableIsEmpty("TZ"))
        qputenv("TZ", "Asia/Shanghai");
    tzset();
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
