#include "Platform/Linux/QtFolderPanel.h"

#include <QDir>
#include <QFileDialog>
#include <QListView>
#include <QTreeView>

using namespace Qt::StringLiterals;

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
    // Qt's own dialog picks one folder, although its two lists could pick several. A desktop's dialog has no such lists.
    for (auto *list : m_dialog->findChildren<QListView *>(u"listView"_s))
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (auto *tree : m_dialog->findChildren<QTreeView *>(u"treeView"_s))
        tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QObject::connect(m_dialog, &QFileDialog::filesSelected, m_dialog, std::move(chosen));
    m_dialog->open();
}

} // namespace velto
