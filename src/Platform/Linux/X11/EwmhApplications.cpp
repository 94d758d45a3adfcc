#include "Platform/Linux/X11/EwmhApplications.h"

#include "Platform/Linux/ApplicationNames.h"

namespace velto {

namespace {

constexpr quint32 kMostClassWords = 256; // of four bytes

/// WM_CLASS is two strings, the instance and the class, each terminated by a null byte (ICCCM 4.1.2.5).
QString identifierOf(const xcb_get_property_reply_t &reply)
{
    const QByteArray both(static_cast<const char *>(xcb_get_property_value(&reply)), xcb_get_property_value_length(&reply));
    const auto parts = both.split('\0');
    return identifierForClass(QString::fromLatin1(parts.value(0)), QString::fromLatin1(parts.value(1)));
}

} // namespace

EwmhApplications::EwmhApplications(XcbServer &server, Clock &clock, bool guest, QObject *parent)
    : Applications(parent)
    , m_server(server)
    , m_guest(guest)
    , m_processes(clock)
{
}

Support EwmhApplications::support() const
{
    if (!m_guest)
        return {};
    return {Support::State::Missing,
            tr("This desktop doesn't tell which window is in front, so questions come to the strip while you are in a terminal "
               "too.")};
}

void EwmhApplications::start()
{
    if (m_started || !m_server.exists())
        return;
    m_started = true;
    m_server.select(m_server.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    connect(&m_server, &XcbServer::rootPropertyChanged, this, &EwmhApplications::rootChanged);
    connect(&m_server, &XcbServer::classChanged, this, [this](xcb_window_t window) {
        if (m_windows.contains(window)) {
            m_windows.remove(window);
            updateSoon();
        }
    });
    connect(&m_processes, &WatchedProcesses::changed, this, &EwmhApplications::updateRunning);
    m_processes.start();
    update();
}

void EwmhApplications::rootChanged(xcb_atom_t property)
{
    if (property == m_server.atom(XcbAtom::ClientList) || property == m_server.atom(XcbAtom::ActiveWindow))
        updateSoon();
}

/// A new window changes both properties, and some window managers write them several times.
void EwmhApplications::updateSoon()
{
    if (m_pending)
        return;
    m_pending = true;
    QMetaObject::invokeMethod(this, &EwmhApplications::update, Qt::QueuedConnection);
}

void EwmhApplications::update()
{
    m_pending = false;
    const auto windows = m_server.values(m_server.root(), m_server.atom(XcbAtom::ClientList));
    readClasses(windows);
    if (!m_processes.followsStarts())
        m_processes.look();
    updateRunning();
    updateFrontmost();
}

/// Requests all classes before it waits for the first, so that many windows cost one round trip.
void EwmhApplications::readClasses(const std::vector<quint32> &windows)
{
    auto *connection = m_server.connection();
    QHash<xcb_window_t, QString> known;
    std::vector<std::pair<xcb_window_t, xcb_get_property_cookie_t>> asked;
    for (const auto window : windows) {
        const auto found = m_windows.constFind(window);
        if (found != m_windows.cend() && !found->isEmpty())
            known.insert(window, *found);
        else
            asked.emplace_back(
                window, xcb_get_property(connection, false, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, kMostClassWords));
    }
    for (const auto &[window, cookie] : asked) {
        xcb_generic_error_t *error = nullptr;
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, &error));
        const XcbReply<xcb_generic_error_t> gone(error);
        if (!reply)
            continue;
        const auto identifier = identifierOf(*reply);
        // Some programs, Spotify among them, set their class only after their window is mapped.
        if (identifier.isEmpty())
            m_server.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        known.insert(window, identifier);
    }
    m_windows = std::move(known);
}

void EwmhApplications::updateRunning()
{
    QStringList now = m_processes.running();
    for (const auto &identifier : std::as_const(m_windows))
        if (!identifier.isEmpty())
            now.append(identifier);
    now.sort();
    now.removeDuplicates();
    if (std::exchange(m_running, now) != now)
        Q_EMIT runningChanged();
}

void EwmhApplications::updateFrontmost()
{
    const auto active = m_server.values(m_server.root(), m_server.atom(XcbAtom::ActiveWindow));
    const auto now = active.empty() ? QString() : m_windows.value(active.front());
    if (std::exchange(m_frontmost, now) != now)
        Q_EMIT frontmostChanged();
}

} // namespace velto
