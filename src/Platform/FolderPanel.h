#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace velto {

/// Lets the user choose folders. UI thread only.
class FolderPanel {
public:
    FolderPanel() = default;
    FolderPanel(const FolderPanel &) = delete;
    FolderPanel &operator=(const FolderPanel &) = delete;
    virtual ~FolderPanel() = default;

    /// Opens the desktop's own panel with `prompt` on its button; `chosen` gets the absolute paths, and isn't called if the
    /// user changes their mind. While one is open, a second call brings it to the front.
    virtual void choose(const QString &prompt, std::function<void(QStringList)> chosen) = 0;
};

} // namespace velto
