#include "Settings/ModuleSettings.h"

#include "Core/Hub.h"
#include "Platform/FolderPanel.h"

#include <QDir>
#include <QMetaEnum>
#include <QPointer>

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
    m_panel.choose(tr("Watch"), [self = QPointer(this)](const QStringList &folders) {
        if (self)
            self->add(folders);
    });
}

void ModuleSettings::add(const QStringList &folders)
{
    QStringList all = m_prefs.repoRoots();
    for (const QString &folder : folders) {
        if (const QString path = QDir::cleanPath(folder); !all.contains(path))
            all.append(path);
    }
    if (all == m_prefs.repoRoots())
        return;
    m_prefs.setRepoRoots(all);
    m_hub.refresh(true);
}

} // namespace velto
