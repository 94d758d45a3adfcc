#pragma once

#include "Platform/Workspace.h"

#include <QObject>

namespace velto {

/// Links go to the user's browser, files to the file manager on the session bus, or failing that to whatever opens folders.
class XdgWorkspace final : public QObject, public Workspace {
    Q_OBJECT
public:
    using QObject::QObject;

    bool open(const QUrl &url) override;
    bool showInFileManager(const QString &path) override;
};

} // namespace velto
