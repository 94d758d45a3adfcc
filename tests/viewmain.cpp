#include "RunTests.h"

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    return runTests(argc, argv);
}
