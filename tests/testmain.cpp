#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

/// Every test program is a Qt application: tests may use widgets, timers and the clipboard.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
