#pragma once

#include "Platform/Background.h"

#include <deque>

namespace velto {

/// A pool that works when the test tells it to, on the test's own thread.
class FakeBackground final : public Background {
public:
    void start(std::function<void()> work, std::function<void()> done) override
    {
        m_jobs.push_back({std::move(work), std::move(done)});
    }
    int pending() const { return int(m_jobs.size()); }
    /// Finishes the job at this place of the queue.
    void finish(int index = 0)
    {
        const Job job = std::move(m_jobs[std::size_t(index)]);
        m_jobs.erase(m_jobs.begin() + index);
        job.work();
        job.done();
    }
    void finishAll()
    {
        while (!m_jobs.empty())
            finish();
    }

private:
    struct Job {
        std::function<void()> work;
        std::function<void()> done;
    };
    std::deque<Job> m_jobs;
};

} // namespace velto
