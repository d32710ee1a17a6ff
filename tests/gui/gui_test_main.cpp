// The window, adapter and video tests need one QApplication for the whole
// run, drawn offscreen unless told otherwise (also when the test runner lists
// the tests, outside ctest's environment), with a font that carries Greek;
// libmpv needs numbers written with a point.

#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
