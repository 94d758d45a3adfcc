#include "Platform/Linux/XdgWorkspace.h"

#include "Platform/Linux/DBusAsk.h"

#include <QDesktopServices>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

bool XdgWorkspace::open(const QUrl &url)
{
    const auto scheme = url.scheme();
    if (!url.isValid() || url.host().isEmpty() || (scheme != "http"_L1 && scheme != "https"_L1))
        return false;
    return QDesktopServices::openUrl(url);
}

bool XdgWorkspace::showInFileManager(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return false;
    const auto folder = QUrl::fromLocalFile(file.isDir() ? file.absoluteFilePath() : file.absolutePath());
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QDesktopServices::openUrl(folder);
    // https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
    DBusMethod show{u"org.freedesktop.FileManager1"_s,
                    u"/org/freedesktop/FileManager1"_s,
                    u"org.freedesktop.FileManager1"_s,
                    file.isDir() ? u"ShowFolders"_s : u"ShowItems"_s,
                    {QStringList{QUrl::fromLocalFile(file.absoluteFilePath()).toString(QUrl::FullyEncoded)}, QString()},
                    true};
    ask(bus, show, this, [folder](const QVariant &shown) {
        if (!shown.isValid())
            QDesktopServices::openUrl(folder);
    });
    return true;
}

} // namespace velto
