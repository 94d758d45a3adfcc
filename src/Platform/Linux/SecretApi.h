#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <condition_variable>
#include <libsecret/secret.h>
#include <mutex>
#include <optional>
#include <thread>

// GLib hides the function behind a macro of the same name.
#undef g_object_ref

namespace velto {

/// The schema under which Velto's secrets are stored, and its name.
inline constexpr auto kSecretSchema = "dev.velto.Secret";
const SecretSchema *secretSchema();

/// The functions of libsecret that are needed, under their own names. A look-up in libsecret finds those of the GLib it links to
/// as well.
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

    SecretApi();
};

/// Whether the user's session has a bus: without one GLib would start its own, which has no keyring.
bool hasSessionBus();
/// Null where there is no keyring. Any thread.
const SecretApi *secretApi();

/// Frees an error, if there is one.
void freeError(const SecretApi &api, GError *error);
/// The secret of an item; nothing if it isn't loaded or isn't UTF-8.
std::optional<QString> secretText(const SecretApi &api, SecretItem *item);

/// Cancels the calls that use it when its time is up.
class SecretDeadline {
public:
    SecretDeadline(const SecretApi &api, std::chrono::seconds limit)
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
    SecretDeadline(const SecretDeadline &) = delete;
    SecretDeadline &operator=(const SecretDeadline &) = delete;
    ~SecretDeadline()
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
class SecretAttributes {
public:
    SecretAttributes(const SecretApi &api, const QString &name)
        : m_api(api)
        , m_name(name.toUtf8())
        , m_table(api.g_hash_table_new(api.g_str_hash, api.g_str_equal))
    {
        m_api.g_hash_table_insert(m_table, const_cast<char *>("service"), m_name.data());
    }
    SecretAttributes(const SecretAttributes &) = delete;
    SecretAttributes &operator=(const SecretAttributes &) = delete;
    ~SecretAttributes() { m_api.g_hash_table_unref(m_table); }

    GHashTable *table() const { return m_table; }

private:
    const SecretApi &m_api;
    QByteArray m_name;
    GHashTable *m_table;
};

/// What was stored under one name at the time of the look-up.
class SecretItems {
public:
    SecretItems(const SecretApi &api, SecretService *service, const SecretAttributes &attributes, GCancellable *cancellable)
        : m_api(api)
    {
        GError *error = nullptr;
        const auto flags = SecretSearchFlags(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
        m_items = api.secret_service_search_sync(service, secretSchema(), attributes.table(), flags, cancellable, &error);
        freeError(api, error);
    }
    SecretItems(const SecretItems &) = delete;
    SecretItems &operator=(const SecretItems &) = delete;
    ~SecretItems()
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

} // namespace velto
