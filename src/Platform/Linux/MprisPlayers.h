#pragma once

#include "Platform/MediaPlayers.h"

#include <QDBusConnection>
#include <QHash>
#include <QStringList>

class QDBusServiceWatcher;

namespace velto {

/// The players that speak MPRIS on the session bus (https://specifications.freedesktop.org/mpris-spec/latest/): music players,
/// video players and browsers. Knows of none before start(); then follows who comes and goes, and asks nobody by itself.
class MprisPlayers final : public MediaPlayers {
    Q_OBJECT
public:
    explicit MprisPlayers(QObject *parent = nullptr);

    void start(const QDBusConnection &session);
    QList<MediaPlayer> running() const override;
    void ask(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done) override;
    void playPause(const QString &id) override;

private:
    void ownerChanged(const QString &service, const QString &newOwner);
    void askState(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done) const;
    Q_SLOT void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalidated);

    QDBusConnection m_bus;
    QDBusServiceWatcher *m_watcher = nullptr;
    QStringList m_services; ///< sorted
    QHash<QString, QString> m_names; ///< what players call themselves, once they were asked
};

} // namespace velto
