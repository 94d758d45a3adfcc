#include "Platform/Fake/FakeClock.h"

namespace velto {

class FakeClock::Entry final : public Timer {
public:
    Entry(std::weak_ptr<FakeClock *> clock, std::shared_ptr<Armed> armed)
        : m_clock(std::move(clock))
        , m_armed(std::move(armed))
    {
    }
    ~Entry() override
    {
        auto clock = m_clock.lock();
        if (!clock)
            return;
        std::erase_if((*clock)->m_timers, [this](const auto &timer) { return timer.second == m_armed; });
        m_armed->interval = Duration{0};
        m_armed->fire = {};
    }

private:
    std::weak_ptr<FakeClock *> m_clock;
    std::shared_ptr<Armed> m_armed;
};

FakeClock::FakeClock(QDateTime start)
    : m_wall(std::move(start))
    , m_self(std::make_shared<FakeClock *>(this))
{
}

FakeClock::~FakeClock() = default;

TimerHandle FakeClock::arm(Duration delay, Armed armed)
{
    auto shared = std::make_shared<Armed>(std::move(armed));
    m_timers.emplace(Key{m_elapsed + delay, m_nextId++}, shared);
    return std::make_unique<Entry>(m_self, std::move(shared));
}

TimerHandle FakeClock::after(Duration delay, std::function<void()> fire)
{
    return arm(delay, {std::move(fire)});
}

TimerHandle FakeClock::every(Duration interval, std::function<void()> fire)
{
    return arm(interval, {std::move(fire), interval});
}

void FakeClock::post(QObject *context, std::function<void()> task)
{
    m_posted.emplace_back(context, std::move(task));
}

void FakeClock::runPosted()
{
    while (!m_posted.empty()) {
        auto [context, task] = std::move(m_posted.front());
        m_posted.pop_front();
        if (context)
            task();
    }
}

void FakeClock::advance(Duration step)
{
    const Duration end = m_elapsed + step;
    runPosted();
    while (!m_timers.empty() && m_timers.begin()->first.first <= end) {
        auto node = m_timers.extract(m_timers.begin());
        m_wall = m_wall.addMSecs((node.key().first - m_elapsed).count());
        m_elapsed = node.key().first;
        const std::shared_ptr<Armed> armed = node.mapped();
        if (armed->interval.count() > 0)
            m_timers.emplace(Key{m_elapsed + armed->interval, m_nextId++}, armed);
        if (auto fire = armed->fire)
            fire();
        runPosted();
    }
    m_wall = m_wall.addMSecs((end - m_elapsed).count());
    m_elapsed = end;
}

} // namespace velto
