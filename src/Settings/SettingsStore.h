#pragma once

#include "Feeds/Work/TokenSettings.h"
#include "Settings/AboutSettings.h"
#include "Settings/ClaudeSettings.h"
#include "Settings/GeneralSettings.h"
#include "Settings/ModuleSettings.h"
#include "Settings/QuillboxSettings.h"

namespace velto {

class Clock;
class FileWriter;

/// What the settings window shows, pane by pane. UI thread only.
class SettingsStore : public QObject {
    Q_OBJECT
    Q_PROPERTY(velto::GeneralSettings *general READ general CONSTANT FINAL)
    Q_PROPERTY(velto::ModuleSettings *modules READ modules CONSTANT FINAL)
    Q_PROPERTY(velto::ClaudeSettings *claude READ claude CONSTANT FINAL)
    Q_PROPERTY(velto::TokenSettings *tokens READ tokens CONSTANT FINAL)
    Q_PROPERTY(velto::QuillboxSettings *quillbox READ quillbox CONSTANT FINAL)
    Q_PROPERTY(velto::AboutSettings *about READ about CONSTANT FINAL)
    /// What of the user's isn't on the disk yet, and why; empty if all is.
    Q_PROPERTY(QString unsaved READ unsaved NOTIFY unsavedChanged FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        Hub &hub;
        AgentsSource &agents;
        QuillboxSource &quillbox;
        Prefs &prefs;
        Background &background;
        Clock &clock;
        Defaults &defaults;
        FileWriter &writer;
        Keychain &keychain;
        FolderPanel &folderPanel;
        LoginItem &loginItem;
        TerminalApp &terminal;
        HotKey &hotKey;
        HookInstaller &installer;
        const ToolRunner &tools;
        const Places &places;
        int hookPort;
        QString version; ///< empty for a build that has none
    };
    explicit SettingsStore(const Needs &needs, QObject *parent = nullptr);

    GeneralSettings *general() { return &m_general; }
    ModuleSettings *modules() { return &m_modules; }
    ClaudeSettings *claude() { return &m_claude; }
    TokenSettings *tokens() { return &m_tokens; }
    QuillboxSettings *quillbox() { return &m_quillbox; }
    AboutSettings *about() { return &m_about; }
    QString unsaved() const;
    Q_INVOKABLE void saveAgain();

Q_SIGNALS:
    void unsavedChanged();

private:
    FileWriter &m_writer;
    GeneralSettings m_general;
    ModuleSettings m_modules;
    ClaudeSettings m_claude;
    TokenSettings m_tokens;
    QuillboxSettings m_quillbox;
    AboutSettings m_about;
};

} // namespace velto
