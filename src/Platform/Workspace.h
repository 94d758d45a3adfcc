#pragma once

#include <QString>
#include <QUrl>

namespace velto {

/// Hands things over to the desktop. UI thread only; returns at once.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;
    virtual ~Workspace() = default;

    /// Opens a link in the user's default program. Anything but http and https is refused. False if nothing was started.
    virtual bool open(const QUrl &url) = 0;
    /// Shows a file or folder, selected, in the user's file manager.
    virtual bool showInFileManager(const QString &path) = 0;
};

} // namespace velto
