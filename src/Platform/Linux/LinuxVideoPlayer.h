#pragma once

#include "Platform/VideoPlayer.h"

#include <memory>

class QProcess;

namespace velto {

/// A process of its own with the browser engine (velto-video), whose window becomes a part of ours. So the engine is loaded
/// with the first video only, its memory goes with the sheet, and a Velto without it still runs.
class LinuxVideoPlayer final : public VideoPlayer {
    Q_OBJECT
public:
    explicit LinuxVideoPlayer(QObject *parent = nullptr);
    ~LinuxVideoPlayer() override;

    bool installed() const override;
    void open(const QString &html, const QUrl &base, quintptr window, const QRect &place) override;
    void move(const QRect &place) override;
    void close() override;

private:
    static QString program();

    std::unique_ptr<QProcess> m_process;
    QRect m_place;
};

} // namespace velto
