#pragma once

#include "Platform/FolderPanel.h"

#include <QObject>
#include <memory>

class QProcess;

namespace velto {

/// The desktop's folder dialog, in a process of its own (velto-folders), which loads the toolkit for it.
class ProcessFolderPanel final : public QObject, public FolderPanel {
    Q_OBJECT
public:
    /// `program` is run for the dialog; if empty, the one that an installation has.
    explicit ProcessFolderPanel(QString program = {}, QObject *parent = nullptr);
    ~ProcessFolderPanel() override;

    void choose(const QString &prompt, std::function<void(QStringList)> chosen) override;

private:
    QString m_program;
    std::unique_ptr<QProcess> m_process;
};

} // namespace velto
