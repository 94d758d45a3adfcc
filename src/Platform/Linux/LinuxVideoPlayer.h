#pragma once

#include "Platform/VideoPlayer.h"

#include <QStringList>
#include <memory>

class QProcess;

namespace velto {

/// A process of its own with the browser engine (velto-video), whose window becomes a part of ours. So the engine is loaded
/// with the first video only, its memory is freed with the sheet, and Velto runs without it too.
class LinuxVideoPlayer final : public VideoPlayer {
    Q_OBJECT
public:
    /// Where the player may be: the first path that exists is taken; with none given, where an installation has it.
    explicit LinuxVideoPlayer(QStringList places = {}, QObject *parent = nullptr);
    ~LinuxVideoPlayer() override;

    bool installed() const override;
    void open(const QString &html, const QUrl &base, quintptr window, const QRect &place) override;
    void move(const QRect &place) override;
    void close() override;

private:
    QString program() const;

    QStringList m_places;
    std::unique_ptr<QProcess> m_process;
    QRect m_place;
};

} // namespace velto
