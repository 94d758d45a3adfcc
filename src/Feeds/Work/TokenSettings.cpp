#include "Feeds/Work/TokenSettings.h"

#include "Core/Link.h"
#include "Core/Prefs.h"
#include "Platform/Keychain.h"

#include <QCoreApplication>
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
    , m_keyring(keychain)
    , m_keychain(background, keychain)
{
    connect(&m_prefs, &Prefs::changed, this, &TokenSettings::changed);
    connect(&m_keyring, &Keychain::lockedChanged, this, [this] {
        Q_EMIT changed();
        if (!locked())
            look();
    });
    // While what is stored is still written.
    if (const auto *program = QCoreApplication::instance())
        connect(program, &QCoreApplication::aboutToQuit, this, [this] { store(); });
}

TokenSettings::~TokenSettings()
{
    m_life.reset();
    store();
}

bool TokenSettings::locked() const
{
    return m_keyring.locked();
}

void TokenSettings::unlock()
{
    m_keyring.unlock();
}

QString TokenSettings::jiraSite() const
{
    return m_site.value_or(m_prefs.jiraSite());
}

void TokenSettings::setJiraSite(const QString &site)
{
    m_site = site;
    Q_EMIT changed();
}

QString TokenSettings::jiraEmail() const
{
    return m_email.value_or(m_prefs.jiraEmail());
}

void TokenSettings::setJiraEmail(const QString &email)
{
    m_email = email;
    Q_EMIT changed();
}

/// Stores what was typed only when it is finished: a half-typed site must not be asked.
bool TokenSettings::store()
{
    const QString site = withoutPassword(jiraSite());
    const QString email = jiraEmail();
    m_site.reset();
    m_email.reset();
    const bool another = site != m_prefs.jiraSite() || email != m_prefs.jiraEmail();
    if (site != m_prefs.jiraSite())
        m_prefs.setJiraSite(site);
    if (email != m_prefs.jiraEmail())
        m_prefs.setJiraEmail(email);
    return another;
}

void TokenSettings::readAnew()
{
    if (store())
        Q_EMIT refreshWanted();
    Q_EMIT changed();
}

void TokenSettings::type(const QString &name, const QString &token)
{
    if (m_typed.value(name) == token)
        return;
    m_typed.insert(name, token);
    ++m_revision;
    Q_EMIT changed();
}

void TokenSettings::save(const QString &name, const QString &token)
{
    if (token.trimmed().isEmpty())
        return;
    type(name, {});
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
    const bool kept = co_await m_keychain.put(name, token);
    if (life.expired())
        co_return;
    m_problems.remove(name);
    if (!kept)
        m_problems.insert(name, token ? refusal() : tr("The keyring couldn't erase it."));
    if (!kept && token && m_typed.value(name).isEmpty())
        m_typed.insert(name, *token);
    ++m_revision;
    Q_EMIT changed();
    co_await look();
    if (life.expired())
        co_return;
    store();
    Q_EMIT refreshWanted();
}

QString TokenSettings::refusal() const
{
    return locked() ? tr("The keyring is locked, so it couldn't keep it. Unlock it and save again.")
                    : tr("The keyring couldn't keep it: perhaps it is locked, or none is running.");
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
