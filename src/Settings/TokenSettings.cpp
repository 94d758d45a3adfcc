#include "Settings/TokenSettings.h"

#include "Core/Hub.h"
#include "Core/Prefs.h"
#include "Platform/Keychain.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::array kNames{"Velto.linear"_L1, "Velto.jira"_L1, "Velto.slack"_L1};

} // namespace

TokenSettings::TokenSettings(Hub &hub, Prefs &prefs, Keychain &keychain, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_prefs(prefs)
    , m_keychain(keychain)
{
    connect(&m_prefs, &Prefs::changed, this, &TokenSettings::changed);
}

QString TokenSettings::jiraSite() const
{
    return m_prefs.jiraSite();
}

void TokenSettings::setJiraSite(const QString &site)
{
    m_prefs.setJiraSite(site);
}

QString TokenSettings::jiraEmail() const
{
    return m_prefs.jiraEmail();
}

void TokenSettings::setJiraEmail(const QString &email)
{
    m_prefs.setJiraEmail(email);
}

void TokenSettings::save(const QString &name, const QString &token)
{
    if (token.trimmed().isEmpty())
        return;
    m_keychain.put(name, token.trimmed());
    afterChange();
}

void TokenSettings::remove(const QString &name)
{
    m_keychain.put(name, std::nullopt);
    afterChange();
}

void TokenSettings::reread()
{
    m_saved.clear();
    for (const auto name : kNames) {
        if (m_keychain.get(name))
            m_saved.insert(name);
    }
    ++m_revision;
    Q_EMIT changed();
}

void TokenSettings::afterChange()
{
    reread();
    m_hub.refresh(true);
}

} // namespace velto
