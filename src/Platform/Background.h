#pragma once

#include <QPointer>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace velto {

/// A thread pool for slow work: outside tools, files, parsing.
class Background {
public:
    Background() = default;
    Background(const Background &) = delete;
    Background &operator=(const Background &) = delete;
    virtual ~Background() = default;

    /// Runs `work` on the pool and then `done` on the UI thread. Called on the UI thread.
    /// `work` gets copies of what it needs and touches no store. `done` isn't called once the program is ending.
    virtual void start(std::function<void()> work, std::function<void()> done) = 0;
};

/// Runs `work()` in the background and hands its value to `done(value)` on the UI thread, unless `context` is gone by then.
template <typename Work, typename Done> void inBackground(Background &background, QObject *context, Work work, Done done)
{
    using Value = std::invoke_result_t<Work>;
    auto value = std::make_shared<std::optional<Value>>();
    background.start([work = std::move(work), value] { value->emplace(work()); },
                     [value, done = std::move(done), alive = QPointer<QObject>(context)] {
                         if (alive)
                             done(std::move(**value));
                     });
}

/// The same for a coroutine of the UI thread: awaiting what this returns gives the value of `work()`. The caller checks
/// afterwards whether its own object still lives. Once the program is ending, the coroutine doesn't go on.
/// Give it a name first and await that: GCC 12 destroys what a lambda within a co_await expression has captured twice.
template <typename Work> auto inBackground(Background &background, Work work)
{
    using Value = std::invoke_result_t<Work>;
    struct Awaiter {
        Background &background;
        Work work;
        std::shared_ptr<std::optional<Value>> value = std::make_shared<std::optional<Value>>();

        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> waiting)
        {
            background.start([work = std::move(work), value = value] { value->emplace(work()); },
                             [waiting]() mutable { waiting.resume(); });
        }
        Value await_resume() { return std::move(**value); }
    };
    return Awaiter{background, std::move(work)};
}

} // namespace velto
