#pragma once

#include "Platform/FolderPanel.h"

#include <QObject>
#include <memory>

class QProcess;

namespace velto {

/// The desktop's dialog for folders, in a process of its own (velto-folders) that brings the toolkit for it along.
class ProcessFolderPanel final : public QObject, public FolderPanel {
    Q_OBJECT
public:
    /// `program` is asked for when the panel is; without one, where an installation has it.
    explicit ProcessFolderPanel(QString program = {}, QObject *parent = nullptr);
    ~ProcessFolderPanel() override;

    void choose(const QString &prompt, std::function<void(QStringList)> chosen) override;

private:
    QString m_program;
    std::unique_ptr<QProcess> m_process;
};

} // namespace velto
