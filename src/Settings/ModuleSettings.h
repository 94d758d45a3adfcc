#pragma once

#include "Core/Prefs.h"
#include "Core/RowModel.h"

#include <QObject>

namespace velto {

class FolderPanel;
class Hub;

/// Which modules are shown, and which folders are searched. UI thread only.
class ModuleSettings : public QObject {
    Q_OBJECT
    /// module, label, detail, on
    Q_PROPERTY(QAbstractItemModel *modules READ modules CONSTANT FINAL)
    /// folder, shown
    Q_PROPERTY(QAbstractItemModel *folders READ folders CONSTANT FINAL)
    Q_PROPERTY(bool foldersShown READ foldersShown NOTIFY changed FINAL)
public:
    /// All of it outlives this. Paths below `home` are shown with "~".
    ModuleSettings(Hub &hub, Prefs &prefs, FolderPanel &panel, const QString &home, QObject *parent = nullptr);

    QAbstractItemModel *modules() { return &m_modules; }
    QAbstractItemModel *folders() { return &m_folders; }
    bool foldersShown() const { return m_prefs.isOn(Prefs::Module::Repos); }

    /// By its raw value.
    Q_INVOKABLE void set(const QString &module, bool on);
    Q_INVOKABLE void removeFolder(const QString &folder);
    /// Asks the user for folders and adds each once.
    Q_INVOKABLE void chooseFolders();

Q_SIGNALS:
    void changed();

private:
    void update();

    Hub &m_hub;
    Prefs &m_prefs;
    FolderPanel &m_panel;
    QString m_home;
    RowModel m_modules;
    RowModel m_folders;
};

} // namespace velto
