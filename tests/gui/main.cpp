// Entry point of the GUI test suite: the custom URL schemes must be declared before the
// application object exists, and the web engine starts once for the whole suite.
#include "forms/web/LumoraScheme.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    lumora::registerLumoraSchemes();
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
