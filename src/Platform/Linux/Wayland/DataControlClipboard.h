#pragma once

#include "Platform/Clipboard.h"
#include "Platform/Linux/Wayland/WaylandServer.h"
#include "Platform/Posix/Descriptor.h"
#include "Platform/Timer.h"

#include <QSocketNotifier>
#include <memory>

namespace velto {

class Clock;

/// The clipboard by ext-data-control or wlr's, which reports copies while another program has the keyboard; the toolkit
/// notices them only while it has it itself. Counts from start() on. One reading at a time.
class DataControlClipboard final : public QObject, public Clipboard {
    Q_OBJECT
public:
    DataControlClipboard(WaylandServer &server, Clock &clock, QObject *parent = nullptr);
    ~DataControlClipboard() override;

    void start();
    int changeCount() const override { return m_count; }
    QString text() const override;
    void read(int longest, QObject *context, std::function<void(std::optional<QString>)> done) override;
    void setText(const QString &text) override;
    Support support() const override;

private:
    struct Offer {
        ext_data_control_offer_v1 *object = nullptr;
        QByteArrayList types;
    };

    void drop(ext_data_control_offer_v1 *offer);
    void arrived();
    void finish(const std::optional<QString> &text);
    static const ext_data_control_device_v1_listener kDevice;
    static const ext_data_control_offer_v1_listener kOffer;
    static const ext_data_control_source_v1_listener kSource;
    static const wl_callback_listener kStanding;

    WaylandServer &m_server;
    Clock &m_clock;
    ext_data_control_manager_v1 *m_manager = nullptr;
    ext_data_control_device_v1 *m_device = nullptr;
    ext_data_control_source_v1 *m_source = nullptr; ///< while what was copied last is ours
    QByteArray m_own;
    QList<Offer> m_offers; ///< at most the one that comes and the one that is there
    ext_data_control_offer_v1 *m_selection = nullptr;
    wl_callback *m_standing = nullptr; ///< until the earlier copy has been reported
    bool m_following = false; ///< since then, each copy is counted
    int m_count = 0;
    Descriptor m_pipe;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_bytes;
    int m_longest = 0;
    std::function<void(std::optional<QString>)> m_done;
    TimerHandle m_patience;
};

} // namespace velto
