#pragma once

#include <QObject>
#include <QStringList>

namespace velto {

/// How a second start of the program, the desktop's menu and its keys reach the one that runs. An action is a short name
/// with dashes, such as "open-and-search"; the receiver ignores one that it doesn't know. UI thread only.
class Activation : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Makes this the only program on its settings until it ends. False if another already is. Called before anything else,
    /// before there is an application object; returns at once.
    virtual bool claim() = 0;
    /// Has the running program do these in turn. Waits a few seconds at most until it has accepted them; false if it can't be
    /// reached, or ends meanwhile, and then claim() may succeed. Needs an application object.
    virtual bool handOver(const QStringList &actions) = 0;
    /// From now on the desktop reaches this program. `startedForIt`: the desktop started it in order to reach it, so that its
    /// first "open" means no more than the start.
    virtual void listen(bool startedForIt) = 0;

Q_SIGNALS:
    void wanted(const QString &action);
};

} // namespace velto
