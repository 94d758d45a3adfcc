#include "Platform/Fake/FakeClock.h"

#include "Platform/Clock.h"

#include <QPointer>
#include <deque>
#include <map>

namespace velto {

/// The time and the timers.
class FakeClock::Hands final : public Clock {
public:
    struct Armed {
        std::function<void()> fire;
        Duration interval{0}; ///< 0 for one-shot timers
    };

    explicit Hands(const QDateTime &start)
        : wall(start)
    {
    }

    QDateTime wallTime() const override { return wall; }
    Instant now() const override { return Instant(elapsed); }
    TimerHandle after(Duration delay, std::function<void()> fire) override { return arm(delay, {std::move(fire)}); }
    TimerHandle every(Duration interval, std::function<void()> fire) override
    {
        return arm(interval, {std::move(fire), interval});
    }
    void post(QObject *context, std::function<void()> task) override { posted.emplace_back(context, std::move(task)); }

    void runPosted()
    {
        while (!posted.empty()) {
            auto [context, task] = std::move(posted.front());
            posted.pop_front();
            if (context)
                task();
        }
    }
    void fireFirst()
    {
        auto node = timers.extract(timers.begin());
        wall = wall.addMSecs((node.key().first - elapsed).count());
        elapsed = node.key().first;
        const std::shared_ptr<Armed> armed = node.mapped();
        if (armed->interval.count() > 0)
            timers.emplace(Key{elapsed + armed->interval, nextId++}, armed);
        if (auto fire = armed->fire)
            fire();
    }

    using Key = std::pair<Duration, quint64>;
    QDateTime wall;
    Duration elapsed{0};
    std::map<Key, std::shared_ptr<Armed>> timers;

private:
    class Entry final : public Timer {
    public:
        Entry(std::weak_ptr<Hands *> hands, std::shared_ptr<Armed> armed)
            : m_hands(std::move(hands))
            , m_armed(std::move(armed))
        {
        }
        ~Entry() override
        {
            const auto hands = m_hands.lock();
            if (!hands)
                return;
            std::erase_if((*hands)->timers, [this](const auto &timer) { return timer.second == m_armed; });
            *m_armed = {};
        }

    private:
        std::weak_ptr<Hands *> m_hands;
        std::shared_ptr<Armed> m_armed;
    };

    TimerHandle arm(Duration delay, Armed armed)
    {
        auto shared = std::make_shared<Armed>(std::move(armed));
        timers.emplace(Key{elapsed + delay, nextId++}, shared);
        return std::make_unique<Entry>(self, std::move(shared));
    }

    quint64 nextId = 0;
    std::deque<std::pair<QPointer<QObject>, std::function<void()>>> posted;
    std::shared_ptr<Hands *> self = std::make_shared<Hands *>(this);
};

FakeClock::FakeClock(const QDateTime &start)
    : m_hands(std::make_unique<Hands>(start))
{
}

FakeClock::~FakeClock() = default;

Clock &FakeClock::clock() const
{
    return *m_hands;
}

QDateTime FakeClock::wallTime() const
{
    return m_hands->wall;
}

Instant FakeClock::now() const
{
    return m_hands->now();
}

void FakeClock::setWallTime(const QDateTime &wall)
{
    m_hands->wall = wall;
}

int FakeClock::pendingTimers() const
{
    return int(m_hands->timers.size());
}

void FakeClock::runPosted()
{
    m_hands->runPosted();
}

void FakeClock::advance(std::chrono::milliseconds step)
{
    const auto end = m_hands->elapsed + step;
    m_hands->runPosted();
    while (!m_hands->timers.empty() && m_hands->timers.begin()->first.first <= end) {
        m_hands->fireFirst();
        m_hands->runPosted();
    }
    m_hands->wall = m_hands->wall.addMSecs((end - m_hands->elapsed).count());
    m_hands->elapsed = end;
}

} // namespace velto
