#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <memory>

class QSocketNotifier;

namespace velto {

/// The screen recorders that run, with or without a window: a recorder that works is often nothing but a tray icon.
/// There is no event for a new process, so look() is called when windows come and go; the end of one is told by the kernel.
class RecorderProcesses final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~RecorderProcesses() override;

    /// Looks at the processes that are new since the last time: a fraction of a millisecond. True if that changed running().
    bool look();
    QStringList running() const;

Q_SIGNALS:
    void ended();

private:
    struct Recorder;
    void follow(int process, const QString &identifier);

    QSet<int> m_seen;
    QHash<int, std::shared_ptr<Recorder>> m_recorders;
};

} // namespace velto
