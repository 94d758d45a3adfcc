#include "Hooks/HookLink.h"

#include "Hooks/HookInstaller.h"

namespace velto {

HookLink::HookLink(const HookRoad::Needs &needs, QObject *parent)
    : QObject(parent)
    , m_installer(needs.installer)
    , m_road(needs)
{
    read();
    connect(&m_road, &HookRoad::changed, this, &HookLink::changed);
    connect(&m_road, &HookRoad::formChanged, this, [this] {
        read();
        Q_EMIT changed();
    });
}

void HookLink::read()
{
    m_needsUpgrade = m_installer.needsUpgrade();
    m_installed = !m_needsUpgrade && m_installer.present();
}

bool HookLink::goesPastProxy() const
{
    return m_installer.goesPastProxy();
}

QString HookLink::preview() const
{
    return m_installer.preview();
}

void HookLink::install()
{
    m_error = m_installer.install();
    if (!m_error) {
        m_installed = true;
        m_needsUpgrade = false;
        m_road.prove();
    }
    Q_EMIT changed();
}

void HookLink::remove()
{
    m_error = m_installer.uninstall();
    if (!m_error) {
        m_installed = false;
        m_needsUpgrade = false;
        m_road.forget();
    }
    Q_EMIT changed();
}

void HookLink::turnEnded(Instant since)
{
    if (m_installed)
        m_road.turnEnded(since);
}

} // namespace velto
