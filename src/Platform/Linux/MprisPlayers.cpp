#include "Platform/Linux/MprisPlayers.h"

#include "Platform/Linux/DBusAsk.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QPointer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kPrefix = "org.mpris.MediaPlayer2."_L1;
constexpr auto kPath = "/org/mpris/MediaPlayer2"_L1;
constexpr auto kRoot = "org.mpris.MediaPlayer2"_L1;
constexpr auto kPlayer = "org.mpris.MediaPlayer2.Player"_L1;
constexpr auto kProperties = "org.freedesktop.DBus.Properties"_L1;
constexpr std::chrono::seconds kLimit{5};
constexpr qsizetype kLongestText = 1000;

/// Represents whichever player was active last, under a name of its own.
constexpr auto kStandIn = "org.mpris.MediaPlayer2.playerctld"_L1;

bool isPlayer(const QString &service)
{
    return service.startsWith(kPrefix) && service != kStandIn;
}

/// A second instance of a program has a suffix: "vlc.instance7389".
MediaPlayer::Known knownAs(const QString &service)
{
    const bool spotify = service.mid(kPrefix.size()).section(u'.', 0, 0).compare("spotify"_L1, Qt::CaseInsensitive) == 0;
    return spotify ? MediaPlayer::Known::Spotify : MediaPlayer::Known::No;
}

/// The dictionary in an answer; empty if it is anything else.
QVariantMap dictionary(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        return argument.currentSignature() == "a{sv}"_L1 ? qdbus_cast<QVariantMap>(argument) : QVariantMap();
    }
    return value.userType() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

/// One string, or a list of strings joined. Players disagree with the standard on which it is.
QString text(const QVariant &value)
{
    const int type = value.userType();
    const bool readable = type == QMetaType::QString || type == QMetaType::QStringList;
    return readable ? value.toStringList().join(", "_L1).left(kLongestText) : QString();
}

MediaReport::State stateOf(const QString &status)
{
    if (status == "Playing"_L1)
        return MediaReport::State::Playing;
    return status == "Paused"_L1 ? MediaReport::State::Paused : MediaReport::State::Stopped;
}

} // namespace

MprisPlayers::MprisPlayers(QObject *parent)
    : MediaPlayers(parent)
    , m_bus(QString())
{
}

void MprisPlayers::start(const QDBusConnection &session)
{
    m_bus = session;
    if (!m_bus.isConnected() || m_watcher)
        return;
    m_watcher = new QDBusServiceWatcher(kRoot + u'*', m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &service, const QString &, const QString &newOwner) { ownerChanged(service, newOwner); });
    m_bus.connect(QString(), kPath, kProperties, u"PropertiesChanged"_s, {kPlayer}, u"sa{sv}as"_s, this,
                  SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    const auto bus = u"org.freedesktop.DBus"_s;
    velto::ask(m_bus, {bus, u"/org/freedesktop/DBus"_s, bus, u"ListNames"_s, {}}, this, [this](const QVariant &names) {
        const auto list = names.toStringList();
        std::ranges::copy_if(list, std::back_inserter(m_services), isPlayer);
        // Some may have appeared, and been announced, before this answer.
        m_services.sort();
        m_services.removeDuplicates();
        if (!m_services.isEmpty())
            Q_EMIT changed();
    });
}

void MprisPlayers::ownerChanged(const QString &service, const QString &newOwner)
{
    if (!isPlayer(service))
        return;
    m_names.remove(service);
    m_services.removeAll(service);
    if (!newOwner.isEmpty())
        m_services.insert(std::ranges::lower_bound(m_services, service), service);
    Q_EMIT changed();
}

void MprisPlayers::propertiesChanged(const QString &, const QVariantMap &changed, const QStringList &invalidated)
{
    // Volume and position don't matter. Neither does the sender, since the players themselves are asked next.
    for (const auto &property : {u"PlaybackStatus"_s, u"Metadata"_s})
        if (changed.contains(property) || invalidated.contains(property)) {
            Q_EMIT MediaPlayers::changed();
            return;
        }
}

QList<MediaPlayer> MprisPlayers::running() const
{
    QList<MediaPlayer> players;
    for (const auto &service : m_services)
        players.append({service, knownAs(service)});
    return players;
}

void MprisPlayers::ask(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done)
{
    if (m_names.contains(id)) {
        askState(id, context, std::move(done));
        return;
    }
    auto identity = propertyOf(id, kPath, kRoot, u"Identity"_s);
    identity.limit = kLimit;
    velto::ask(m_bus, identity, this, [this, id, alive = QPointer(context), done = std::move(done)](const QVariant &name) {
        // A player that is gone by now would leave its name in the table.
        if (const auto known = text(name); !known.isEmpty() && m_services.contains(id))
            m_names.insert(id, known);
        if (alive)
            askState(id, alive, done);
    });
}

void MprisPlayers::askState(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done) const
{
    DBusMethod everything{id, kPath, kProperties, u"GetAll"_s, {QString(kPlayer)}};
    everything.limit = kLimit;
    const auto name = m_names.value(id, id.mid(kPrefix.size()));
    velto::ask(m_bus, everything, context, [name, done = std::move(done)](const QVariant &answer) {
        const auto properties = dictionary(answer);
        if (properties.isEmpty()) {
            done(std::nullopt);
            return;
        }
        const auto metadata = dictionary(properties.value(u"Metadata"_s));
        done(MediaReport{name, text(metadata.value(u"xesam:title"_s)), text(metadata.value(u"xesam:artist"_s)),
                         stateOf(properties.value(u"PlaybackStatus"_s).toString())});
    });
}

void MprisPlayers::playPause(const QString &id)
{
    auto message = QDBusMessage::createMethodCall(id, kPath, kPlayer, u"PlayPause"_s);
    message.setAutoStartService(false);
    m_bus.send(message);
}

} // namespace velto
