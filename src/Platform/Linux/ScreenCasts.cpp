#include "Platform/Linux/ScreenCasts.h"

#include "Platform/Linux/OptionalLibrary.h"

#include <QSet>
#include <QSocketNotifier>
#include <cstring>
#include <pipewire/impl-module.h>
#include <pipewire/pipewire.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The functions exported as symbols; the rest of the interface is called through the objects' method tables.
struct PipeWireApi {
    decltype(&::pw_init) init = nullptr;
    decltype(&::pw_loop_new) loopNew = nullptr;
    decltype(&::pw_loop_destroy) loopDestroy = nullptr;
    decltype(&::pw_properties_new_string) propertiesNew = nullptr;
    decltype(&::pw_context_new) contextNew = nullptr;
    decltype(&::pw_context_destroy) contextDestroy = nullptr;
    decltype(&::pw_context_load_module) loadModule = nullptr;
    decltype(&::pw_context_connect) connect = nullptr;
    decltype(&::pw_core_disconnect) disconnect = nullptr;
    decltype(&::pw_proxy_destroy) proxyDestroy = nullptr;
    decltype(&::pw_log_set_level) setLogLevel = nullptr;
    bool complete = false;

    PipeWireApi()
    {
        OptionalLibrary library(u"pipewire-0.3"_s, 0);
        library.resolve(init, "pw_init");
        library.resolve(loopNew, "pw_loop_new");
        library.resolve(loopDestroy, "pw_loop_destroy");
        library.resolve(propertiesNew, "pw_properties_new_string");
        library.resolve(contextNew, "pw_context_new");
        library.resolve(contextDestroy, "pw_context_destroy");
        library.resolve(loadModule, "pw_context_load_module");
        library.resolve(connect, "pw_context_connect");
        library.resolve(disconnect, "pw_core_disconnect");
        library.resolve(proxyDestroy, "pw_proxy_destroy");
        library.resolve(setLogLevel, "pw_log_set_level");
        complete = library.isComplete();
        if (!complete)
            return;
        init(nullptr, nullptr);
        setLogLevel(SPA_LOG_LEVEL_ERROR); // it warns of each module that isn't loaded
    }
};

const PipeWireApi &api()
{
    static const PipeWireApi kApi;
    return kApi;
}

/// PipeWire's socket, as pipewire(1) finds it from the environment; empty if there is none.
QByteArray socketPath()
{
    QByteArray folder = qgetenv("PIPEWIRE_RUNTIME_DIR");
    if (folder.isEmpty())
        folder = qgetenv("XDG_RUNTIME_DIR");
    QByteArray name = qgetenv("PIPEWIRE_REMOTE");
    if (name.isEmpty())
        name = "pipewire-0";
    return folder.isEmpty() || name.startsWith('/') ? name : folder + '/' + name;
}

/// A camera is a video source too, but one with a device.
bool isScreenCast(const spa_dict *properties)
{
    const auto value = [properties](const char *key) { return QByteArrayView(spa_dict_lookup(properties, key)); };
    const QByteArrayView kind = value(PW_KEY_MEDIA_CLASS);
    return (kind == "Video/Source" || kind == "Stream/Output/Video") && value(PW_KEY_DEVICE_ID).isEmpty()
        && value(PW_KEY_MEDIA_ROLE) != "Camera";
}

} // namespace

class ScreenCasts::Connection {
public:
    explicit Connection(ScreenCasts &owner)
        : m_owner(owner)
    {
        if (!api().complete)
            return;
        m_loop = api().loopNew(nullptr);
        // Without the client's usual configuration: its modules are for programs that play or record.
        m_context =
            m_loop ? api().contextNew(m_loop, api().propertiesNew(R"(config.name="null" context.num-data-loops=0)"), 0) : nullptr;
        if (m_context && api().loadModule(m_context, "libpipewire-module-protocol-native", nullptr, nullptr))
            m_core = api().connect(m_context, nullptr, 0);
        if (!m_core)
            return;
        m_registry = pw_core_get_registry(m_core, PW_VERSION_REGISTRY, 0);
        pw_core_add_listener(m_core, &m_coreListener, &coreEvents(), this);
        pw_registry_add_listener(m_registry, &m_registryListener, &registryEvents(), this);
        m_notifier = std::make_unique<QSocketNotifier>(pw_loop_get_fd(m_loop), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_owner, [this] { iterate(); });
    }
    ~Connection()
    {
        m_notifier.reset();
        if (m_registry)
            api().proxyDestroy(reinterpret_cast<pw_proxy *>(m_registry));
        if (m_core)
            api().disconnect(m_core);
        if (m_context)
            api().contextDestroy(m_context);
        if (m_loop)
            api().loopDestroy(m_loop);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    bool stands() const { return m_core && !m_ended; }
    bool casts() const { return !m_casts.isEmpty(); }

    /// Sends and receives what is pending. Reports by changed(), so the owner must have this connection by then.
    void iterate()
    {
        if (!stands())
            return;
        const bool before = casts();
        pw_loop_enter(m_loop);
        while (pw_loop_iterate(m_loop, 0) > 0 && !m_ended) { }
        pw_loop_leave(m_loop);
        if (m_ended) {
            m_casts.clear();
            m_notifier->setEnabled(false);
        }
        if (casts() != before)
            Q_EMIT m_owner.changed();
    }

private:
    static Connection &of(void *data) { return *static_cast<Connection *>(data); }
    static const pw_core_events &coreEvents();
    static const pw_registry_events &registryEvents();

    ScreenCasts &m_owner;
    pw_loop *m_loop = nullptr;
    pw_context *m_context = nullptr;
    pw_core *m_core = nullptr;
    pw_registry *m_registry = nullptr;
    spa_hook m_coreListener{};
    spa_hook m_registryListener{};
    std::unique_ptr<QSocketNotifier> m_notifier;
    QSet<uint32_t> m_casts;
    bool m_ended = false; ///< the media server has gone
};

const pw_core_events &ScreenCasts::Connection::coreEvents()
{
    static const auto kEvents = [] {
        pw_core_events events{};
        events.version = PW_VERSION_CORE_EVENTS;
        events.error = [](void *data, uint32_t id, int, int, const char *) {
            if (id == PW_ID_CORE)
                of(data).m_ended = true;
        };
        return events;
    }();
    return kEvents;
}

const pw_registry_events &ScreenCasts::Connection::registryEvents()
{
    static const auto kEvents = [] {
        pw_registry_events events{};
        events.version = PW_VERSION_REGISTRY_EVENTS;
        events.global = [](void *data, uint32_t id, uint32_t, const char *type, uint32_t, const spa_dict *properties) {
            if (std::strcmp(type, PW_TYPE_INTERFACE_Node) == 0 && properties && isScreenCast(properties))
                of(data).m_casts.insert(id);
        };
        events.global_remove = [](void *data, uint32_t id) { of(data).m_casts.remove(id); };
        return events;
    }();
    return kEvents;
}

ScreenCasts::ScreenCasts(QObject *parent)
    : QObject(parent)
{
}

ScreenCasts::~ScreenCasts() = default;

void ScreenCasts::look()
{
    if (m_connection && m_connection->stands())
        return;
    m_connection.reset();
    struct stat status = {};
    if (::stat(socketPath().constData(), &status) != 0 || !S_ISSOCK(status.st_mode))
        return;
    // Tried each time: the socket may not be listened to yet, and systemd's outlives the server and serves the next one.
    m_connection = std::make_unique<Connection>(*this);
    m_connection->iterate(); // sends the requests; a fast server's answers may be among what it receives
}

bool ScreenCasts::running() const
{
    return m_connection && m_connection->casts();
}

} // namespace velto
