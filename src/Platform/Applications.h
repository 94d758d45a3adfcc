#pragma once

#include "Platform/Support.h"

#include <QObject>
#include <QStringList>

namespace velto {

/// The applications of the desktop, by identifiers that are the same on every platform: "com.obsproject.obs-studio",
/// "com.spotify.client"; any terminal of the platform is "com.apple.Terminal" unless it has an identifier of its own
/// (see TerminalApp). UI thread only; answers come from memory.
class Applications : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

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
