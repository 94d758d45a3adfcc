#pragma once

#include <QTest>

namespace velto {

/// Runs each test class in turn; the exit status is the number of failures.
template <typename... Tests> int runTests(int argc, char **argv)
{
    int failures = 0;
    const auto run = [&](auto test) { failures += QTest::qExec(test.get(), argc, argv); };
    (run(std::make_unique<Tests>()), ...);
    return failures;
}

} // namespace velto
