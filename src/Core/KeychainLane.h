#pragma once

#include <QObject>
#include <QString>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Keychain;

/// Reads and writes secrets without waiting for the keyring: off the UI thread, one after the other, in the order in which
/// they were asked for, so that a secret that was erased isn't put back by an older write. UI thread only.
class KeychainLane : public QObject {
    Q_OBJECT
public:
    KeychainLane(Background &background, Keychain &keychain, QObject *parent = nullptr);
    /// What still waits continues with nothing. Pending writes are done all the same, after what is under way; a reading
    /// that hasn't begun is dropped.
    ~KeychainLane() override;

    QCoro::Task<std::optional<QString>> get(QString name);
    /// Done once the keyring has answered; whether the secret is now stored, or erased.
    QCoro::Task<bool> put(QString name, std::optional<QString> value);

private:
    struct Job;
    struct Wait;

    using Work = std::function<std::optional<QString>(Keychain &)>;
    std::shared_ptr<Job> add(Work work, bool writes);
    void startNext();

    Background &m_background;
    Keychain &m_keychain;
    std::deque<std::shared_ptr<Job>> m_jobs; ///< the first one is under way
    std::shared_ptr<std::mutex> m_turn = std::make_shared<std::mutex>(); ///< held while a job is under way
};

} // namespace velto
