#include "Platform/Linux/Wayland/DataControlClipboard.h"

#include "Platform/Clock.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace velto {

namespace {

constexpr quint32 kVersion = 1;
constexpr quint32 kWlrVersion = 2;
constexpr std::chrono::seconds kPatience{5};
constexpr std::array kTextTypes{"text/plain;charset=utf-8", "UTF8_STRING", "text/plain"};
// With this type a password manager asks others not to look at what it copied.
constexpr auto kSecretType = "x-kde-passwordManagerHint";

/// ext-data-control before it was standardised: the same requests and events in the same order.
const wl_interface &wlrManager()
{
    static const wl_interface kInterface = [] {
        auto manager = ext_data_control_manager_v1_interface;
        manager.name = "zwlr_data_control_manager_v1";
        manager.version = int(kWlrVersion);
        return manager;
    }();
    return kInterface;
}

DataControlClipboard &of(void *data)
{
    return *static_cast<DataControlClipboard *>(data);
}

} // namespace

const ext_data_control_device_v1_listener DataControlClipboard::kDevice{
    .data_offer =
        [](void *data, ext_data_control_device_v1 *, ext_data_control_offer_v1 *offer) {
            of(data).m_offers.append(Offer{offer, {}});
            ext_data_control_offer_v1_add_listener(offer, &kOffer, data);
        },
    .selection =
        [](void *data, ext_data_control_device_v1 *, ext_data_control_offer_v1 *offer) {
            auto &me = of(data);
            if (auto *before = std::exchange(me.m_selection, offer))
                me.drop(before);
            if (!me.m_following)
                return;
            ++me.m_count;
            me.copied();
        },
    .finished =
        [](void *data, ext_data_control_device_v1 *device) {
            of(data).m_device = nullptr;
            ext_data_control_device_v1_destroy(device);
        },
    .primary_selection = [](void *data, ext_data_control_device_v1 *, ext_data_control_offer_v1 *offer) { of(data).drop(offer); },
};

const ext_data_control_offer_v1_listener DataControlClipboard::kOffer{
    .offer =
        [](void *data, ext_data_control_offer_v1 *object, const char *type) {
            for (auto &offer : of(data).m_offers)
                if (offer.object == object)
                    offer.types.append(type);
        },
};

const ext_data_control_source_v1_listener DataControlClipboard::kSource{
    .send =
        [](void *data, ext_data_control_source_v1 *, const char *, int32_t pipe) {
            const Descriptor out(pipe);
            // A reader that takes nothing must not block us; what Velto copies fits into the pipe.
            fcntl(pipe, F_SETFL, O_NONBLOCK);
            const auto &text = of(data).m_own;
            [[maybe_unused]] const auto written = ::write(pipe, text.constData(), std::size_t(text.size()));
        },
    .cancelled =
        [](void *data, ext_data_control_source_v1 *source) {
            if (of(data).m_source == source)
                of(data).m_source = nullptr;
            ext_data_control_source_v1_destroy(source);
        },
};

const wl_callback_listener DataControlClipboard::kStanding{
    .done =
        [](void *data, wl_callback *callback, uint32_t) {
            of(data).m_standing = nullptr;
            of(data).m_following = true;
            wl_callback_destroy(callback);
        },
};

DataControlClipboard::DataControlClipboard(WaylandServer &server, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_clock(clock)
{
}

DataControlClipboard::~DataControlClipboard()
{
    if (m_standing)
        wl_callback_destroy(m_standing);
    for (const auto &offer : std::as_const(m_offers))
        ext_data_control_offer_v1_destroy(offer.object);
    if (m_source)
        ext_data_control_source_v1_destroy(m_source);
    if (m_device)
        ext_data_control_device_v1_destroy(m_device);
    if (m_manager)
        ext_data_control_manager_v1_destroy(m_manager);
}

void DataControlClipboard::start()
{
    if (m_manager || !m_server.seat())
        return;
    m_manager = m_server.bind<ext_data_control_manager_v1>(ext_data_control_manager_v1_interface, kVersion);
    if (!m_manager)
        m_manager = m_server.bind<ext_data_control_manager_v1>(wlrManager(), kWlrVersion);
    if (!m_manager)
        return;
    m_device = ext_data_control_manager_v1_get_data_device(m_manager, m_server.seat());
    ext_data_control_device_v1_add_listener(m_device, &kDevice, this);
    // What was copied before the start is reported ahead of this. If nothing was, KWin 5 reports nothing.
    m_standing = wl_display_sync(m_server.display());
    wl_callback_add_listener(m_standing, &kStanding, this);
    ::signal(SIGPIPE, SIG_IGN); // the pasting program may close the pipe early
    m_server.flush();
}

Support DataControlClipboard::support() const
{
    if (m_server.version(ext_data_control_manager_v1_interface) > 0 || m_server.version(wlrManager()) > 0)
        return {};
    return {Support::State::Missing, tr("This desktop keeps the clipboard to the program in front, so copied links go unseen.")};
}

void DataControlClipboard::drop(ext_data_control_offer_v1 *object)
{
    if (!object)
        return;
    m_offers.removeIf([object](const Offer &offer) { return offer.object == object; });
    ext_data_control_offer_v1_destroy(object);
}

QString DataControlClipboard::text() const
{
    return m_source ? QString::fromUtf8(m_own) : QGuiApplication::clipboard()->text();
}

void DataControlClipboard::read(int longest, QObject *context, std::function<void(std::optional<QString>)> done)
{
    finish(std::nullopt);
    m_longest = longest;
    m_done = [alive = QPointer(context), done = std::move(done)](const std::optional<QString> &text) {
        if (alive)
            done(text);
    };
    if (m_source) {
        finish(m_own.size() <= longest ? std::optional(QString::fromUtf8(m_own)) : std::nullopt);
        return;
    }
    const auto offer =
        std::find_if(m_offers.cbegin(), m_offers.cend(), [this](const Offer &o) { return o.object == m_selection; });
    if (!m_selection || offer == m_offers.cend() || offer->types.contains(kSecretType)) {
        finish(std::nullopt);
        return;
    }
    const auto *const type =
        std::find_if(kTextTypes.begin(), kTextTypes.end(), [&](const char *wanted) { return offer->types.contains(wanted); });
    std::array<int, 2> ends{};
    if (type == kTextTypes.end() || pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        finish(std::nullopt);
        return;
    }
    m_pipe = Descriptor(ends[0]);
    const Descriptor theirs(ends[1]);
    ext_data_control_offer_v1_receive(m_selection, *type, ends[1]);
    m_server.flush(); // sends a copy of the descriptor
    m_notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &DataControlClipboard::arrived);
    m_patience = m_clock.after(kPatience, [this] { finish(std::nullopt); });
}

void DataControlClipboard::arrived()
{
    std::array<char, 4096> part{};
    const auto count = ::read(m_pipe.get(), part.data(), part.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count > 0) {
        m_bytes.append(part.data(), qsizetype(count));
        if (m_bytes.size() > m_longest)
            finish(std::nullopt); // the other side finds its pipe closed
        return;
    }
    finish(count == 0 ? std::optional(QString::fromUtf8(m_bytes)) : std::nullopt);
}

void DataControlClipboard::finish(const std::optional<QString> &text)
{
    m_patience.reset();
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // this may run in one of its own signals
    }
    m_pipe = {};
    m_bytes.clear();
    if (const auto done = std::exchange(m_done, {}))
        done(text);
}

void DataControlClipboard::setText(const QString &text)
{
    m_own = text.toUtf8();
    if (!m_device) {
        QGuiApplication::clipboard()->setText(text);
        return;
    }
    // The previous source is told that it is replaced, and destroyed then.
    m_source = ext_data_control_manager_v1_create_data_source(m_manager);
    ext_data_control_source_v1_add_listener(m_source, &kSource, this);
    for (const auto *type : kTextTypes)
        ext_data_control_source_v1_offer(m_source, type);
    ext_data_control_device_v1_set_selection(m_device, m_source);
    m_server.flush();
}

} // namespace velto
