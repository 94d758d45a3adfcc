#include "RunTests.h"
#include "Shell/DelegateTest.h"
#include "Shell/GeometryTest.h"
#include "Shell/TodosTest.h"
#include "Shell/UITest.h"

#include <QGuiApplication>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    return velto::runTests<velto::GeometryTest, velto::UITest, velto::DelegateTest, velto::TodosTest>(argc, argv);
}
