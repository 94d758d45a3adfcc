#include "Core/KeychainLane.h"

#include "Platform/Background.h"
#include "Platform/Keychain.h"

#include <coroutine>

namespace velto {

using Secret = std::optional<QString>;

struct KeychainLane::Job {
    Work work;
    bool writes = false;
    Secret result = {};
    std::coroutine_handle<> waiting = {};
};

struct KeychainLane::Wait {
    Job &job;

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting) const { job.waiting = waiting; }
    void await_resume() const { }
};

KeychainLane::KeychainLane(Background &background, Keychain &keychain, QObject *parent)
    : QObject(parent)
    , m_background(background)
    , m_keychain(keychain)
{
}

KeychainLane::~KeychainLane()
{
    const auto jobs = std::exchange(m_jobs, {});
    std::deque<std::shared_ptr<Job>> writes;
    for (std::size_t i = 1; i < jobs.size(); ++i) {
        if (jobs[i]->writes)
            writes.push_back(jobs[i]);
    }
    if (!writes.empty()) {
        m_background.start(
            [writes, turn = m_turn, &keychain = m_keychain] {
                const std::lock_guard after(*turn);
                for (const auto &job : writes)
                    job->work(keychain);
            },
            [] {});
    }
    for (const auto &job : jobs)
        job->waiting.resume();
}

QCoro::Task<Secret> KeychainLane::get(QString name)
{
    const auto job = add([name](Keychain &keychain) { return keychain.get(name); }, false);
    co_await Wait{*job};
    co_return std::move(job->result);
}

QCoro::Task<bool> KeychainLane::put(QString name, Secret value)
{
    auto kept = std::make_shared<bool>(false);
    const auto write = [name, value, kept](Keychain &keychain) {
        *kept = keychain.put(name, value);
        return Secret();
    };
    const auto job = add(write, true);
    co_await Wait{*job};
    co_return *kept;
}

std::shared_ptr<KeychainLane::Job> KeychainLane::add(Work work, bool writes)
{
    auto job = std::make_shared<Job>();
    job->work = std::move(work);
    job->writes = writes;
    m_jobs.push_back(job);
    if (m_jobs.size() == 1)
        startNext();
    return job;
}

void KeychainLane::startNext()
{
    const auto work = [job = m_jobs.front(), turn = m_turn, &keychain = m_keychain] {
        const std::lock_guard inTurn(*turn);
        return job->work(keychain);
    };
    inBackground(m_background, this, work, [this](Secret result) {
        const auto job = m_jobs.front();
        m_jobs.pop_front();
        if (!m_jobs.empty())
            startNext();
        job->result = std::move(result);
        job->waiting.resume(); // may destroy this
    });
}

} // namespace velto
