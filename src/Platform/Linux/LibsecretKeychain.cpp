#include "Platform/Linux/LibsecretKeychain.h"

#include "Platform/Linux/DBusAsk.h"
#include "Platform/Linux/OptionalLibrary.h"
#include "Platform/Linux/SecretSearch.h"

#include <QByteArray>
#include <QDBusObjectPath>
#include <QFile>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <libsecret/secret.h>
#include <mutex>
#include <thread>

// GLib hides the function behind a macro of the same name.
#undef g_object_ref

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kSecrets = "org.freedesktop.secrets"_L1;
constexpr auto kSecretsPath = "/org/freedesktop/secrets"_L1;
constexpr auto kCollection = "org.freedesktop.Secret.Collection"_L1;

constexpr auto kSchemaName = "dev.velto.Secret";
constexpr std::chrono::seconds kReading{3};
constexpr std::chrono::seconds kWriting{30};

const SecretSchema *schema()
{
    static const SecretSchema kSchema = [] {
        SecretSchema made{};
        made.name = kSchemaName;
        made.flags = SECRET_SCHEMA_NONE;
        made.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return made;
    }();
    return &kSchema;
}

/// The functions needed, under their own names. A look-up in libsecret finds those of the GLib it links to as well.
struct SecretApi {
#define VELTO_SECRET_FUNCTIONS(X)                                                                                                \
    X(g_cancellable_new)                                                                                                         \
    X(g_cancellable_cancel)                                                                                                      \
    X(g_object_unref)                                                                                                            \
    X(g_object_ref)                                                                                                              \
    X(g_error_free)                                                                                                              \
    X(g_hash_table_new)                                                                                                          \
    X(g_hash_table_insert)                                                                                                       \
    X(g_hash_table_unref)                                                                                                        \
    X(g_str_hash)                                                                                                                \
    X(g_str_equal)                                                                                                               \
    X(g_list_append)                                                                                                             \
    X(g_list_free)                                                                                                               \
    X(secret_service_get_sync)                                                                                                   \
    X(secret_service_search_sync)                                                                                                \
    X(secret_service_unlock_sync)                                                                                                \
    X(secret_item_get_locked)                                                                                                    \
    X(secret_item_get_secret)                                                                                                    \
    X(secret_value_get)                                                                                                          \
    X(secret_value_unref)                                                                                                        \
    X(secret_item_delete_sync)                                                                                                   \
    X(secret_password_clearv_sync)                                                                                               \
    X(secret_password_storev_sync)

// NOLINTNEXTLINE(bugprone-macro-parentheses): a declared name can't be in parentheses
#define VELTO_DECLARE(name) decltype(&::name) name = nullptr;
    VELTO_SECRET_FUNCTIONS(VELTO_DECLARE)
#undef VELTO_DECLARE

    bool complete = false;

    SecretApi()
    {
        OptionalLibrary library(u"secret-1"_s, 0);
#define VELTO_RESOLVE(name) library.resolve(name, #name);
        VELTO_SECRET_FUNCTIONS(VELTO_RESOLVE)
#undef VELTO_RESOLVE
#undef VELTO_SECRET_FUNCTIONS
        complete = library.isComplete();
    }
};

/// Without a bus GLib would start one of its own, which has no keyring.
bool hasSessionBus()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const auto runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFile::exists(runtime + u"/bus"_s);
}

/// Null where there is no keyring.
const SecretApi *secretApi()
{
    if (!hasSessionBus())
        return nullptr;
    static const SecretApi kApi;
    return kApi.complete ? &kApi : nullptr;
}

/// Cancels the calls that use it when its time is up.
class Deadline {
public:
    Deadline(const SecretApi &api, std::chrono::seconds limit)
        : m_api(api)
        , m_cancellable(api.g_cancellable_new())
        , m_watch([this, limit](const std::stop_token &over) {
            std::unique_lock lock(m_mutex);
            m_wake.wait_for(lock, over, limit, [] { return false; });
            if (!over.stop_requested())
                m_api.g_cancellable_cancel(m_cancellable);
        })
    {
    }
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;
    ~Deadline()
    {
        m_watch.request_stop();
        m_watch.join();
        m_api.g_object_unref(m_cancellable);
    }

    GCancellable *cancellable() const { return m_cancellable; }

private:
    const SecretApi &m_api;
    GCancellable *m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::jthread m_watch;
};

/// The one attribute that identifies a secret.
class Attributes {
public:
    Attributes(const SecretApi &api, const QString &name)
        : m_api(api)
        , m_name(name.toUtf8())
        , m_table(api.g_hash_table_new(api.g_str_hash, api.g_str_equal))
    {
        m_api.g_hash_table_insert(m_table, const_cast<char *>("service"), m_name.data());
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() { m_api.g_hash_table_unref(m_table); }

    GHashTable *table() const { return m_table; }

private:
    const SecretApi &m_api;
    QByteArray m_name;
    GHashTable *m_table;
};

void forget(const SecretApi &api, GError *error)
{
    if (error)
        api.g_error_free(error);
}

std::optional<QString> textOf(const SecretApi &api, SecretItem *item)
{
    auto *value = api.secret_item_get_secret(item);
    if (!value)
        return std::nullopt;
    gsize length = 0;
    const auto *bytes = api.secret_value_get(value, &length);
    const QByteArray utf8(bytes, qsizetype(length));
    api.secret_value_unref(value);
    auto text = QString::fromUtf8(utf8);
    return text.toUtf8() == utf8 ? std::optional(text) : std::nullopt;
}

/// What was stored under one name at the time of the look-up.
class Items {
public:
    Items(const SecretApi &api, SecretService *service, const Attributes &attributes, GCancellable *cancellable)
        : m_api(api)
    {
        GError *error = nullptr;
        const auto flags = SecretSearchFlags(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
        m_items = api.secret_service_search_sync(service, schema(), attributes.table(), flags, cancellable, &error);
        forget(api, error);
    }
    Items(const Items &) = delete;
    Items &operator=(const Items &) = delete;
    ~Items()
    {
        for (auto *at = m_items; at; at = at->next)
            m_api.g_object_unref(at->data);
        m_api.g_list_free(m_items);
    }

    template <typename Use> void each(Use use) const
    {
        for (auto *at = m_items; at; at = at->next)
            use(static_cast<SecretItem *>(at->data));
    }

private:
    const SecretApi &m_api;
    GList *m_items = nullptr;
};

/// An older copy may be in another collection, since the default collection can change.
void eraseOthers(const SecretApi &api, const Attributes &attributes, const QString &value, GCancellable *cancellable)
{
    GError *error = nullptr;
    auto *service = api.secret_service_get_sync(SECRET_SERVICE_NONE, cancellable, &error);
    forget(api, error);
    if (!service)
        return;
    {
        const Items items(api, service, attributes, cancellable);
        items.each([&](SecretItem *item) {
            GError *problem = nullptr;
            if (textOf(api, item) != value)
                api.secret_item_delete_sync(item, cancellable, &problem);
            forget(api, problem);
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
            forget(*m_api, error);
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
    const auto *api = hasSessionBus() && keyringHolds(QLatin1StringView(kSchemaName), name, kReading) ? secretApi() : nullptr;
    if (!api)
        return std::nullopt;
    const Deadline deadline(*api, kReading);
    const Attributes attributes(*api, name);
    GError *error = nullptr;
    auto *service = api->secret_service_get_sync(SECRET_SERVICE_NONE, deadline.cancellable(), &error);
    forget(*api, error);
    if (!service)
        return std::nullopt;
    std::optional<QString> found;
    {
        const Items items(*api, service, attributes, deadline.cancellable());
        SecretItem *locked = nullptr;
        items.each([&](SecretItem *item) {
            if (api->secret_item_get_locked(item))
                locked = item;
            else if (!found)
                found = textOf(*api, item);
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
    const Deadline deadline(*api, kWriting);
    const Attributes attributes(*api, name);
    GError *error = nullptr;
    if (!value || value->isEmpty()) {
        api->secret_password_clearv_sync(schema(), attributes.table(), deadline.cancellable(), &error);
        const bool erased = !error;
        forget(*api, error);
        return erased;
    }
    // Replaces the old secret atomically: if the program is killed here, one of the two is stored.
    const bool kept =
        api->secret_password_storev_sync(schema(), attributes.table(), SECRET_COLLECTION_DEFAULT, name.toUtf8().constData(),
                                         value->toUtf8().constData(), deadline.cancellable(), &error);
    forget(*api, error);
    if (kept)
        eraseOthers(*api, attributes, *value, deadline.cancellable());
    return kept;
}

} // namespace velto
