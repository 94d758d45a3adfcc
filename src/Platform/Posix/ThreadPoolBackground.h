#pragma once

#include "Platform/Background.h"

#include <QObject>
#include <QThreadPool>
#include <vector>

namespace velto {

/// A small thread pool. Its destructor waits for all work, so tools are abandoned first (see PosixToolRunner) and the program
/// limits its end (see endsWithin).
class ThreadPoolBackground final : public Background {
public:
    /// Most work waits for a tool, so there may be more of it at once than there are cores. With one thread it is done in order.
    explicit ThreadPoolBackground(int threads = 8);
    ~ThreadPoolBackground() override;

    void start(std::function<void()> work, std::function<void()> done) override;

    /// Holds back what is started from now on until release(), so that the first frame has the machine to itself.
    /// UI thread, like release().
    void hold() { m_holding = true; }
    void release();

private:
    bool m_holding = false;
    std::vector<std::function<void()>> m_held;
    QThreadPool m_pool;
    QObject m_home; ///< lives on the UI thread; what is done is posted to it
};

} // namespace velto
