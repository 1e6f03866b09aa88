#include <QGuiApplication>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(VarnetPlugin)

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
