// velto-folders PROMPT: the desktop's folder dialog, for one or several folders, with PROMPT on its button. A program of its own,
// so that its toolkit, Qt Widgets, costs nothing before and nothing after folders are chosen.
//
// Standard output: the chosen paths, each followed by a zero byte; nothing if the user cancels. Standard input: each line brings
// the dialog to the front; its end ends the program.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QListView>
#include <QSocketNotifier>
#include <QTreeView>
#include <array>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("velto-folders is started by velto\n", stderr);
        return 2;
    }
    QApplication::setApplicationName(u"velto"_s);
    QGuiApplication::setDesktopFileName(QStringLiteral(VELTO_APPLICATION_ID));
    const QApplication application(argc, argv);
    QFileDialog dialog(nullptr, {}, QDir::homePath());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, QString::fromLocal8Bit(argv[1]));
    // Qt's own dialog picks one folder, although its two lists could pick several. A desktop's dialog has no such lists.
    for (auto *list : dialog.findChildren<QListView *>(u"listView"_s))
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (auto *tree : dialog.findChildren<QTreeView *>(u"treeView"_s))
        tree->setSelectionMode(QAbstractItemView::ExtendedSelection);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &dialog, [&] {
        std::array<char, 64> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
        if (::read(STDIN_FILENO, bytes.data(), bytes.size()) <= 0) {
            input.setEnabled(false);
            return dialog.reject();
        }
        dialog.raise();
        dialog.activateWindow();
    });
    QObject::connect(&dialog, &QFileDialog::filesSelected, &dialog, [](const QStringList &paths) {
        for (const QString &path : paths) {
            const QByteArray name = QFile::encodeName(path);
            std::fwrite(name.constData(), 1, std::size_t(name.size()) + 1, stdout);
        }
    });
    QObject::connect(&dialog, &QDialog::finished, &dialog, &QApplication::quit, Qt::QueuedConnection);
    dialog.open();
    return QApplication::exec();
}
