#include "Feeds/Work/TokenSettings.h"

#include "Core/Prefs.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::array kNames{"Velto.linear"_L1, "Velto.jira"_L1, "Velto.slack"_L1};

} // namespace

TokenSettings::TokenSettings(Prefs &prefs, Background &background, Keychain &keychain, QObject *parent)
    : QObject(parent)
    , m_prefs(prefs)
    , m_keychain(background, keychain)
{
    connect(&m_prefs, &Prefs::changed, this, &TokenSettings::changed);
}

TokenSettings::~TokenSettings()
{
    m_life.reset();
}

QString TokenSettings::jiraSite() const
{
    return m_prefs.jiraSite();
}

void TokenSettings::setJiraSite(const QString &site)
{
    m_unread = m_unread || site != m_prefs.jiraSite();
    m_prefs.setJiraSite(site);
}

QString TokenSettings::jiraEmail() const
{
    return m_prefs.jiraEmail();
}

void TokenSettings::setJiraEmail(const QString &email)
{
    m_unread = m_unread || email != m_prefs.jiraEmail();
    m_prefs.setJiraEmail(email);
}

void TokenSettings::readAnew()
{
    if (std::exchange(m_unread, false))
        Q_EMIT refreshWanted();
}

void TokenSettings::save(const QString &name, const QString &token)
{
    if (!token.trimmed().isEmpty())
        put(name, token.trimmed());
}

void TokenSettings::remove(const QString &name)
{
    put(name, std::nullopt);
}

void TokenSettings::reread()
{
    look();
}

QCoro::Task<> TokenSettings::put(QString name, std::optional<QString> token)
{
    const std::weak_ptr life = m_life;
    co_await m_keychain.put(name, token);
    if (life.expired())
        co_return;
    co_await look();
    if (life.expired())
        co_return;
    m_unread = false;
    Q_EMIT refreshWanted();
}

QCoro::Task<> TokenSettings::look()
{
    const std::weak_ptr life = m_life;
    QSet<QString> saved;
    for (const QString name : kNames) {
        const bool there = (co_await m_keychain.get(name)).has_value();
        if (life.expired())
            co_return;
        if (there)
            saved.insert(name);
    }
    if (saved == m_saved)
        co_return;
    m_saved = saved;
    ++m_revision;
    Q_EMIT changed();
}

} // namespace velto
