#include "desktop/qt/widgets/Theme.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    orvantine::Theme::setUpIcons();
    return RUN_ALL_TESTS();
}
