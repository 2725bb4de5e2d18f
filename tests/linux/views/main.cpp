#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    // No display and no theme of the machine's: the same images everywhere.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
