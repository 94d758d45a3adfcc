#pragma once

#include "Platform/Background.h"

#include <QObject>
#include <QThreadPool>

namespace velto {

/// A small pool of threads. Its end waits for the work under way, so tools are given up first (see PosixToolRunner).
class ThreadPoolBackground final : public Background {
public:
    ThreadPoolBackground();
    ~ThreadPoolBackground() override;

    void start(std::function<void()> work, std::function<void()> done) override;

private:
    QThreadPool m_pool;
    QObject m_home; ///< lives on the UI thread; what is done is posted to it
};

} // namespace velto
