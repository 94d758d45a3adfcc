#include "Hooks/HookLink.h"

namespace velto {

HookLink::HookLink(const HookConnectivity::Needs &needs, QObject *parent)
    : QObject(parent)
    , m_installer(needs.installer)
    , m_connectivity(needs)
{
    stand(m_installer.standing());
    connect(&m_connectivity, &HookConnectivity::changed, this, &HookLink::changed);
    connect(&m_connectivity, &HookConnectivity::formChanged, this, [this] {
        stand(m_installer.standing());
        Q_EMIT changed();
    });
}

void HookLink::stand(HookInstaller::Standing standing)
{
    const bool were = installed();
    m_standing = standing;
    if (were && !installed())
        m_connectivity.forget();
}

void HookLink::found(HookInstaller::Standing standing)
{
    if (standing == m_standing)
        return;
    stand(standing);
    Q_EMIT changed();
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
    ++m_edits;
    m_error = m_installer.install();
    if (!m_error) {
        stand(HookInstaller::Standing::Current);
        m_connectivity.prove();
    }
    Q_EMIT changed();
}

void HookLink::remove()
{
    ++m_edits;
    m_error = m_installer.uninstall();
    if (!m_error) {
        stand(HookInstaller::Standing::Absent);
        m_connectivity.forget();
    }
    Q_EMIT changed();
}

void HookLink::turnEnded(Instant since)
{
    if (installed())
        m_connectivity.turnEnded(since);
}

} // namespace velto
