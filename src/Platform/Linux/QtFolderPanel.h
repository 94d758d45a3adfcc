#pragma once

#include "Platform/FolderPanel.h"

#include <QPointer>

class QFileDialog;

namespace velto {

/// The desktop's file dialog, as Qt's platform theme gives it.
class QtFolderPanel : public FolderPanel {
public:
    void choose(const QString &prompt, std::function<void(QStringList)> chosen) override;

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace velto
