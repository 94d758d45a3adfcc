#include "EventTest.h"
#include "ListenerTest.h"
#include "RequestTest.h"
#include "ServerTest.h"
#include "TokenTest.h"

#include <QCoreApplication>
#include <QTest>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int failed = 0;
    const auto run = [&](auto &&test) { failed += QTest::qExec(&test, argc, argv); };
    run(RequestTest());
    run(EventTest());
    run(TokenTest());
    run(ServerTest());
    run(ListenerTest());
    return failed;
}
