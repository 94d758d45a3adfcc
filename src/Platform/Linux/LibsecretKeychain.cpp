#include "Platform/Linux/LibsecretKeychain.h"

#include "Platform/Linux/DBusAsk.h"
#include "Platform/Linux/SecretApi.h"
#include "Platform/Linux/SecretSearch.h"

#include <QDBusObjectPath>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kSecrets = "org.freedesktop.secrets"_L1;
constexpr auto kSecretsPath = "/org/freedesktop/secrets"_L1;
constexpr auto kCollection = "org.freedesktop.Secret.Collection"_L1;

constexpr std::chrono::seconds kReading{3};
constexpr std::chrono::seconds kWriting{30};

/// An older copy may be in another collection, since the default collection can change.
void eraseOthers(const SecretApi &api, const SecretAttributes &attributes, const QString &value, GCancellable *cancellable)
{
    GError *error = nullptr;
    auto *service = api.secret_service_get_sync(SECRET_SERVICE_NONE, cancellable, &error);
    freeError(api, error);
    if (!service)
        return;
    {
        const SecretItems items(api, service, attributes, cancellable);
        items.each([&](SecretItem *item) {
            GError *problem = nullptr;
            if (secretText(api, item) != value)
                api.secret_item_delete_sync(item, cancellable, &problem);
            freeError(api, problem);
        });
    }
    api.g_object_unref(service);
}

} // namespace

/// Shows the keyring's own dialog, from a thread that waits for the user: once unasked, and whenever it is asked for.
class LibsecretKeychain::Unlocking {
public:
    explicit Unlocking(std::function<void()> unlocked)
        : m_unlocked(std::move(unlocked))
    {
    }
    Unlocking(const Unlocking &) = delete;
    Unlocking &operator=(const Unlocking &) = delete;
    ~Unlocking()
    {
        if (!m_api)
            return;
        m_api->g_cancellable_cancel(m_cancellable);
        if (m_thread.joinable())
            m_thread.join();
        m_api->g_object_unref(m_cancellable);
        m_api->g_object_unref(m_item);
        m_api->g_object_unref(m_service);
    }

    /// Takes note of a locked item.
    void found(const SecretApi &api, SecretService *service, SecretItem *item)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (m_api)
                return;
            m_api = &api;
            m_cancellable = api.g_cancellable_new();
            api.g_object_ref(service);
            api.g_object_ref(item);
            m_service = service;
            m_item = item;
        }
        begin();
    }
    void begin()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_api || m_open.exchange(true))
            return;
        if (m_thread.joinable())
            m_thread.join();
        m_thread = std::thread([this] {
            auto *items = m_api->g_list_append(nullptr, m_item);
            GError *error = nullptr;
            const int count = m_api->secret_service_unlock_sync(m_service, items, m_cancellable, nullptr, &error);
            freeError(*m_api, error);
            m_api->g_list_free(items);
            m_open = false;
            if (count > 0)
                m_unlocked();
        });
    }

private:
    std::function<void()> m_unlocked;
    std::mutex m_mutex;
    const SecretApi *m_api = nullptr;
    GCancellable *m_cancellable = nullptr;
    SecretService *m_service = nullptr;
    SecretItem *m_item = nullptr;
    std::atomic_bool m_open = false;
    std::thread m_thread;
};

LibsecretKeychain::LibsecretKeychain()
    : m_session(QString())
    , m_unlocking(std::make_unique<Unlocking>([this] { setLocked(false); }))
{
}

LibsecretKeychain::~LibsecretKeychain() = default;

void LibsecretKeychain::follow(const QDBusConnection &session)
{
    m_session = session;
    if (!m_session.isConnected())
        return;
    // Without a service name: with one, the call would block until the bus says who owns it.
    m_session.connect(QString(), kSecretsPath, u"org.freedesktop.Secret.Service"_s, u"CollectionChanged"_s, this,
                      SLOT(collectionChanged(QDBusMessage)));
    m_session.connect(QString(), QString(), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
                      QStringList{QString(kCollection)}, u"sa{sv}as"_s, this, SLOT(collectionChanged(QDBusMessage)));
    m_owners.follow(m_session, kSecrets);
}

void LibsecretKeychain::collectionChanged(const QDBusMessage &signal)
{
    if (!m_locked || !m_owners.sent(signal, kSecrets))
        return;
    const auto named = signal.arguments().value(0).value<QDBusObjectPath>().path();
    const QString path = named.isEmpty() ? signal.path() : named;
    ask(m_session, propertyOf(kSecrets, path, kCollection, u"Locked"_s), this, [this](const QVariant &locked) {
        if (locked.isValid() && !locked.toBool())
            setLocked(false);
    });
}

void LibsecretKeychain::setLocked(bool locked) const
{
    if (m_locked.exchange(locked) != locked)
        Q_EMIT const_cast<LibsecretKeychain *>(this)->lockedChanged();
}

void LibsecretKeychain::unlock()
{
    m_unlocking->begin();
}

std::optional<QString> LibsecretKeychain::get(const QString &name) const
{
    const auto *api = hasSessionBus() && keyringHolds(QLatin1StringView(kSecretSchema), name, kReading) ? secretApi() : nullptr;
    if (!api)
        return std::nullopt;
    const SecretDeadline deadline(*api, kReading);
    const SecretAttributes attributes(*api, name);
    GError *error = nullptr;
    auto *service = api->secret_service_get_sync(SECRET_SERVICE_NONE, deadline.cancellable(), &error);
    freeError(*api, error);
    if (!service)
        return std::nullopt;
    std::optional<QString> found;
    {
        const SecretItems items(*api, service, attributes, deadline.cancellable());
        SecretItem *locked = nullptr;
        items.each([&](SecretItem *item) {
            if (api->secret_item_get_locked(item))
                locked = item;
            else if (!found)
                found = secretText(*api, item);
        });
        if (found)
            setLocked(false);
        else if (locked) {
            setLocked(true);
            m_unlocking->found(*api, service, locked);
        }
    }
    api->g_object_unref(service);
    return found;
}

bool LibsecretKeychain::put(const QString &name, const std::optional<QString> &value)
{
    const auto *api = secretApi();
    if (!api)
        return false;
    const SecretDeadline deadline(*api, kWriting);
    const SecretAttributes attributes(*api, name);
    GError *error = nullptr;
    if (!value || value->isEmpty()) {
        api->secret_password_clearv_sync(secretSchema(), attributes.table(), deadline.cancellable(), &error);
        const bool erased = !error;
        freeError(*api, error);
        return erased
            && !keyringHolds(QLatin1StringView(kSecretSchema), name, kReading); // a locked one is passed over in silence
    }
    // Replaces the old secret atomically: if the program is killed here, one of the two is stored.
    const bool kept =
        api->secret_password_storev_sync(secretSchema(), attributes.table(), SECRET_COLLECTION_DEFAULT, name.toUtf8().constData(),
                                         value->toUtf8().constData(), deadline.cancellable(), &error);
    freeError(*api, error);
    if (kept)
        eraseOthers(*api, attributes, *value, deadline.cancellable());
    return kept;
}

} // namespace velto
