#include "HomeView/ConnectViewTest.h"
#include "HomeView/HomeViewTest.h"
#include "RunTests.h"

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    return velto::runTests<velto::HomeViewTest, velto::ConnectViewTest>(argc, argv);
}
