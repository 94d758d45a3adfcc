#include "Feeds/Repositories/WatchFolders.h"

#include "Core/Prefs.h"
#include "Platform/FolderPanel.h"

#include <QCoreApplication>
#include <QDir>
#include <QPointer>

namespace velto {

void chooseWatchFolders(FolderPanel &panel, Prefs &prefs, QObject *context, std::function<void()> added)
{
    const auto add = [&prefs, added = std::move(added), alive = QPointer<QObject>(context)](const QStringList &folders) {
        if (!alive)
            return;
        QStringList all = prefs.repoRoots();
        for (const QString &folder : folders) {
            if (const QString path = QDir::cleanPath(folder); !all.contains(path))
                all.append(path);
        }
        if (all == prefs.repoRoots())
            return;
        prefs.setRepoRoots(all);
        added();
    };
    panel.choose(QCoreApplication::translate("velto::WatchFolders", "Watch"), add);
}

} // namespace velto
