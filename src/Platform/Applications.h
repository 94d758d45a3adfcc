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
    /// The application with the keyboard focus is a terminal, or an editor that has one built in.
    bool terminalInFront() const;

    virtual QStringList running() const = 0;
    /// The application with the keyboard focus; empty if that can't be determined.
    virtual QString frontmost() const = 0;
    /// Whether frontmost() can be determined for every application.
    virtual Support support() const { return {}; }

Q_SIGNALS:
    /// An application started or ended.
    void runningChanged();
    void frontmostChanged();
};

} // namespace velto
