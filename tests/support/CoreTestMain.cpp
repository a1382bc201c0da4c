#include <QCoreApplication>
#include <gtest/gtest.h>

// Core tests need an event loop object for QObject machinery, never a display.
int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
