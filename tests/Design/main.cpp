#include "Design/FieldsTest.h"
#include "Design/LayersTest.h"
#include "Design/PlainTest.h"
#include "Design/PrimitivesTest.h"
#include "Design/SymbolsTest.h"
#include "Design/ThemeTest.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication app(argc, argv);
    int failed = 0;
    const auto run = [&](QObject &&test) { failed += QTest::qExec(&test, argc, argv); };
    run(velto::SymbolsTest());
    run(velto::ThemeTest());
    run(velto::PlainTest());
    run(velto::PrimitivesTest());
    run(velto::LayersTest());
    run(velto::FieldsTest());
    return failed;
}
