#include "Platform/Linux/QtFolderPanel.h"

#include <QDir>
#include <QFileDialog>

namespace velto {

void QtFolderPanel::choose(const QString &prompt, std::function<void(QStringList)> chosen)
{
    if (m_dialog) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QFileDialog(nullptr, {}, QDir::homePath());
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setFileMode(QFileDialog::Directory);
    m_dialog->setOption(QFileDialog::ShowDirsOnly);
    m_dialog->setLabelText(QFileDialog::Accept, prompt);
    QObject::connect(m_dialog, &QFileDialog::filesSelected, m_dialog, std::move(chosen));
    m_dialog->open();
}

} // namespace velto
