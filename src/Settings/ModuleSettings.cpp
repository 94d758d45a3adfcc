#include "Settings/ModuleSettings.h"

#include "Core/Texts.h"
#include "Feeds/Repositories/WatchFolders.h"
#include "Hub/Hub.h"

#include <QMetaEnum>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QList<Prefs::Module> allModules()
{
    const QMetaEnum modules = QMetaEnum::fromType<Prefs::Module>();
    QList<Prefs::Module> result;
    for (int i = 0; i < modules.keyCount(); ++i)
        result.append(Prefs::Module(modules.value(i)));
    return result;
}

} // namespace

ModuleSettings::ModuleSettings(Hub &hub, Prefs &prefs, FolderPanel &panel, const QString &home, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_prefs(prefs)
    , m_panel(panel)
    , m_home(home)
    , m_modules({"module"_ba, "label"_ba, "detail"_ba, "on"_ba})
    , m_folders({"folder"_ba, "shown"_ba})
{
    connect(&m_prefs, &Prefs::changed, this, &ModuleSettings::update);
    update();
}

void ModuleSettings::update()
{
    QList<RowModel::Row> modules;
    for (const Prefs::Module module : allModules())
        modules.append({Prefs::rawValue(module), Prefs::label(module), Prefs::detail(module), m_prefs.isOn(module)});
    m_modules.setRows(modules);

    QList<RowModel::Row> folders;
    for (const QString &folder : m_prefs.repoRoots())
        folders.append(
            {folder, folder == m_home || folder.startsWith(m_home + u'/') ? u'~' + folder.mid(m_home.size()) : folder});
    m_folders.setRows(folders);
    Q_EMIT changed();
}

void ModuleSettings::set(const QString &module, bool on)
{
    for (const Prefs::Module each : allModules()) {
        if (Prefs::rawValue(each) == module && m_prefs.isOn(each) != on) {
            m_prefs.set(each, on);
            m_hub.refresh(true);
        }
    }
}

void ModuleSettings::removeFolder(const QString &folder)
{
    QStringList folders = m_prefs.repoRoots();
    if (folders.removeAll(folder) == 0)
        return;
    m_prefs.setRepoRoots(folders);
    m_hub.refresh(true);
}

void ModuleSettings::chooseFolders()
{
    chooseWatchFolders(m_panel, m_prefs, this, [this] { m_hub.refresh(true); });
}

} // namespace velto
