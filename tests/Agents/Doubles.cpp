// Stand-ins that give way to the real thing as soon as it is linked.

#include "Core/HookInstaller.h"
#include "Core/HookListener.h"
#include "Core/Prefs.h"
#include "Platform/Clock.h"
#include "Platform/Defaults.h"
#include "Platform/Files.h"
#include "Platform/LoopbackServer.h"

#define WEAK __attribute__((weak))
using namespace Qt::StringLiterals;

namespace velto {

WEAK HookListener::~HookListener() = default;
WEAK void HookListener::start() { }

WEAK Prefs::Prefs(Defaults &defaults, const Places &, const Clock &, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_peekOnFinish(true)
{
}
WEAK bool Prefs::isOn(Module module) const
{
    return !m_off.contains(QString::number(int(module)));
}
WEAK void Prefs::set(Module module, bool on)
{
    if (on)
        m_off.remove(QString::number(int(module)));
    else
        m_off.insert(QString::number(int(module)));
    Q_EMIT changed();
}
WEAK void Prefs::setPeekOnFinish(bool value)
{
    m_peekOnFinish = value;
}
WEAK void Prefs::setDismissedAgentIDs(const QSet<QString> &value)
{
    m_dismissedAgentIDs = value;
    Q_EMIT changed();
}

WEAK HookInstaller::HookInstaller(Files &files, const Clock &clock, const QString &home, const QString &token)
    : m_files(files)
    , m_clock(clock)
    , m_settings(home + u"/.claude/settings.json"_s)
    , m_token(token)
{
    (void)m_clock;
}
static QByteArray contentOf(Files &files, const QString &path)
{
    auto read = files.read(path, 1000000);
    return std::holds_alternative<QByteArray>(read) ? std::get<QByteArray>(read) : QByteArray();
}
WEAK std::optional<QString> HookInstaller::install()
{
    if (contentOf(m_files, m_settings) == "[]")
        return u"no"_s;
    m_files.replace(m_settings, QByteArray("127.0.0.1:4747/") + m_token.toUtf8());
    return {};
}
WEAK std::optional<QString> HookInstaller::uninstall()
{
    m_files.replace(m_settings, "{}");
    return {};
}
WEAK bool HookInstaller::present() const
{
    return contentOf(m_files, m_settings).contains("127.0.0.1:4747/");
}
WEAK bool HookInstaller::needsUpgrade() const
{
    return present() && !contentOf(m_files, m_settings).contains(m_token.toUtf8());
}
WEAK QString HookInstaller::preview() const
{
    return {};
}

} // namespace velto
