#include "Settings/SettingsStore.h"

#include "Hub/Hub.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Tabs/Agents/AgentsSource.h"

namespace velto {

SettingsStore::SettingsStore(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_writer(needs.writer)
    , m_general({needs.hub, needs.prefs, needs.loginItem, needs.terminal, needs.hotKey})
    , m_modules(needs.hub, needs.prefs, needs.folderPanel, needs.places.home)
    , m_claude(needs.agents, needs.tools, needs.places, needs.hookPort)
    , m_tokens(needs.prefs, needs.background, needs.keychain)
    , m_quillbox(needs.quillbox, needs.prefs, needs.background, needs.keychain)
    , m_about({needs.installer, needs.loginItem, needs.background, needs.clock, needs.keychain, needs.defaults, needs.version})
{
    connect(&m_tokens, &TokenSettings::refreshWanted, this, [&hub = needs.hub] { hub.refresh(true); });
    connect(&m_writer, &FileWriter::changed, this, &SettingsStore::unsavedChanged);
}

QString SettingsStore::unsaved() const
{
    const QStringList problems = m_writer.problems();
    return problems.isEmpty() ? QString() : tr("Not saved yet. %1 Velto keeps trying.").arg(problems.join(u' '));
}

void SettingsStore::saveAgain()
{
    m_writer.tryAgain();
}

} // namespace velto
