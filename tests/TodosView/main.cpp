#include "TodosView/TodosKeysTest.h"
#include "TodosView/TodosViewTest.h"

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    return velto::runTests<velto::TodosViewTest, velto::TodosKeysTest>(argc, argv);
}
