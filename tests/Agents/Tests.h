#pragma once

#include <QList>
#include <QObject>
#include <memory>

/// The test classes of this program. Each file registers its own.
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
