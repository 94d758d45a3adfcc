// A lower bound: what a QML window of the strip's size costs before any code of ours runs. Ends on SIGTERM.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication app(argc, argv);
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/bare-window.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
