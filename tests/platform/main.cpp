// The adapters' tests need a Qt application object, always headless (also
// when the test runner lists the tests, outside ctest's environment), and
// libmpv needs numbers written with a point.

#include <gtest/gtest.h>

#include <QApplication>
#include <clocale>
#include <cstdlib>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
