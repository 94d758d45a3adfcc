#include "Settings/AboutSettings.h"

#include "Hooks/HookInstaller.h"
#include "Platform/Background.h"
#include "Platform/Defaults.h"
#include "Platform/Keychain.h"
#include "Platform/LoginItem.h"

using namespace Qt::StringLiterals;

namespace velto {

AboutSettings::AboutSettings(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
{
}

QString AboutSettings::version() const
{
    return m_needs.version.isEmpty() ? u"dev"_s : m_needs.version;
}

void AboutSettings::reset()
{
    m_needs.installer.uninstall(); // best effort: a file that can't be changed must not stop the rest
    m_needs.loginItem.set(false);
    // Quitting waits for it only briefly, so a hung keyring doesn't hold it up.
    m_needs.background.start([&keychain = m_needs.keychain] { keychain.put(u"Velto.quillbox"_s, std::nullopt); }, [] {});
    m_needs.defaults.clear();
    Q_EMIT quitWanted();
}

} // namespace velto
