#include "Platform/Linux/CanberraSounds.h"

#include "Platform/Background.h"
#include "Platform/Linux/OptionalLibrary.h"

#include <QSemaphore>
#include <array>
#include <canberra.h>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// A theme's sound takes a second or two; a sound server that hangs takes for ever.
constexpr std::chrono::milliseconds kLongest{5000};

struct ThemeSound {
    QLatin1StringView name;
    const char *event;
};
constexpr std::array kSounds{ThemeSound{"Glass"_L1, "complete"}};

const char *eventFor(const QString &name)
{
    for (const auto &sound : kSounds)
        if (name == sound.name)
            return sound.event;
    return nullptr;
}

struct CanberraApi {
    decltype(&::ca_context_create) create = nullptr;
    decltype(&::ca_context_destroy) destroy = nullptr;
    decltype(&::ca_context_play_full) play = nullptr;
    decltype(&::ca_proplist_create) createProperties = nullptr;
    decltype(&::ca_proplist_destroy) destroyProperties = nullptr;
    decltype(&::ca_proplist_sets) set = nullptr;
    bool complete = false;

    CanberraApi()
    {
        OptionalLibrary library(u"canberra"_s, 0);
        library.resolve(create, "ca_context_create");
        library.resolve(destroy, "ca_context_destroy");
        library.resolve(play, "ca_context_play_full");
        library.resolve(createProperties, "ca_proplist_create");
        library.resolve(destroyProperties, "ca_proplist_destroy");
        library.resolve(set, "ca_proplist_sets");
        complete = library.isComplete();
    }
};

/// Connects to the sound server, plays, and waits for the end. A connection kept open would wake the program now and then.
void playToTheEnd(const char *event)
{
    static const CanberraApi kApi;
    ca_context *made = nullptr;
    if (!kApi.complete || kApi.create(&made) != CA_SUCCESS)
        return;
    QSemaphore ended;
    // Destroying the context stops what plays and calls back: so it is destroyed before what it calls back into.
    const std::unique_ptr<ca_context, decltype(kApi.destroy)> context(made, kApi.destroy);
    ca_proplist *properties = nullptr;
    if (kApi.createProperties(&properties) != CA_SUCCESS)
        return;
    kApi.set(properties, CA_PROP_EVENT_ID, event);
    kApi.set(properties, CA_PROP_MEDIA_ROLE, "event");
    kApi.set(properties, CA_PROP_APPLICATION_NAME, "Velto");
    const auto released = [](ca_context *, uint32_t, int, void *semaphore) { static_cast<QSemaphore *>(semaphore)->release(); };
    const bool plays = kApi.play(context.get(), 1, properties, released, &ended) == CA_SUCCESS;
    kApi.destroyProperties(properties);
    if (plays)
        ended.tryAcquire(1, int(kLongest.count()));
}

} // namespace

CanberraSounds::CanberraSounds(Background &background)
    : m_background(background)
{
}

void CanberraSounds::play(const QString &name)
{
    if (const char *event = eventFor(name))
        m_background.start([event] { playToTheEnd(event); }, [] {});
}

} // namespace velto
