#pragma once

#include <QObject>
#include <QStringList>

namespace velto {

/// How a second start of the program, the desktop's menu and its keys reach the one that runs. An action is a short name
/// with dashes, such as "open-and-search"; what isn't known is ignored by whoever receives it. UI thread only.
class Activation : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Makes this the one program of its settings, until it ends. False if another one is that already. Asked first of all,
    /// before there is an application object, and quick.
    virtual bool claim() = 0;
    /// Has the one that runs do these in turn. Waits until it has taken them, for a few seconds at most; false if it can't be
    /// reached. Needs an application object.
    virtual bool handOver(const QStringList &actions) = 0;
    /// From now on the desktop reaches this program. `startedForIt`: the desktop started it in order to reach it, so that its
    /// first "open" means no more than the start.
    virtual void listen(bool startedForIt) = 0;

Q_SIGNALS:
    void wanted(const QString &action);
};

} // namespace velto
