#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

/// The test classes of this program; each file adds its own.
std::vector<std::function<std::unique_ptr<QObject>()>> &tests();

template <typename Test> struct AddTest {
    AddTest()
    {
        tests().push_back([] { return std::make_unique<Test>(); });
    }
};
