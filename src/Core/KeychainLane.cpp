#include "Core/KeychainLane.h"

#include "Platform/Background.h"
#include "Platform/Keychain.h"

#include <coroutine>

namespace velto {

using Secret = std::optional<QString>;

struct KeychainLane::Job {
    std::function<Secret(Keychain &)> work;
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
    for (const auto &job : jobs)
        job->waiting.resume();
}

QCoro::Task<Secret> KeychainLane::get(QString name)
{
    const auto job = add([name](Keychain &keychain) { return keychain.get(name); });
    co_await Wait{*job};
    co_return std::move(job->result);
}

QCoro::Task<> KeychainLane::put(QString name, Secret value)
{
    const auto job = add([name, value](Keychain &keychain) {
        keychain.put(name, value);
        return Secret();
    });
    co_await Wait{*job};
}

std::shared_ptr<KeychainLane::Job> KeychainLane::add(std::function<Secret(Keychain &)> work)
{
    auto job = std::make_shared<Job>(Job{std::move(work)});
    m_jobs.push_back(job);
    if (m_jobs.size() == 1)
        startNext();
    return job;
}

void KeychainLane::startNext()
{
    const auto work = [job = m_jobs.front(), &keychain = m_keychain] { return job->work(keychain); };
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
