#pragma once

#include <QList>
#include <QTest>
#include <array>
#include <memory>

/// The test classes of a program; each file registers its own.
using MakeTest = std::unique_ptr<QObject> (*)();
inline QList<MakeTest> &tests()
{
    static QList<MakeTest> list;
    return list;
}

template <typename Test> struct Registered {
    Registered()
    {
        tests().append([]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });
    }
};

/// Runs the registered classes, one after the other; the exit status is the number of classes that failed.
inline int runTests(int argc, char **argv)
{
    int failed = 0;
    for (const MakeTest make : tests())
        failed += QTest::qExec(make().get(), argc, argv) != 0;
    return failed;
}

/// Sets the columns of a test's table: columns<QString, int>({"text", "count"}).
template <typename... Types> void columns(const std::array<const char *, sizeof...(Types)> &names)
{
    auto name = names.begin();
    (QTest::addColumn<Types>(*name++), ...);
}
