#pragma once

#include <QObject>
#include <QString>
#include <deque>
#include <functional>
#include <memory>
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
    /// What still waits goes on with nothing; what was asked for and hasn't begun is given up.
    ~KeychainLane() override;

    QCoro::Task<std::optional<QString>> get(QString name);
    /// Done once it has been written, as far as it could be.
    QCoro::Task<> put(QString name, std::optional<QString> value);

private:
    struct Job;
    struct Wait;

    std::shared_ptr<Job> add(std::function<std::optional<QString>(Keychain &)> work);
    void startNext();

    Background &m_background;
    Keychain &m_keychain;
    std::deque<std::shared_ptr<Job>> m_jobs; ///< the first one is under way
};

} // namespace velto
