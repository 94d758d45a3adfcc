#pragma once

#include "Platform/Support.h"

#include <QObject>
#include <QStringList>

namespace velto {

inline constexpr auto kScreenLocker = QLatin1StringView("screen-locker");

/// The applications of the desktop. Within Platform they go by identifiers that are the same everywhere: any recorder of this
/// desktop is "com.obsproject.obs-studio", any terminal "com.apple.Terminal" unless it has an identifier of its own, any program
/// that locks the screen is kScreenLocker. UI thread only; answers come from memory.
class Applications : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// A screen recorder runs.
    bool recorderRuns() const;
    /// A program has the user's screen locked.
    bool lockerRuns() const;
    /// What has the user's keyboard is a terminal, or an editor with one in it.
    bool terminalInFront() const;

    virtual QStringList running() const = 0;
    /// The application that has the user's keyboard; empty if that can't be told.
    virtual QString frontmost() const = 0;
    /// Whether frontmost() can be told for all applications.
    virtual Support support() const { return {}; }

Q_SIGNALS:
    /// Some application was launched or ended.
    void runningChanged();
    void frontmostChanged();
};

} // namespace velto
