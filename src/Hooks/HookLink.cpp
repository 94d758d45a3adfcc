#include "Hooks/HookLink.h"

namespace velto {

HookLink::HookLink(const HookRoad::Needs &needs, QObject *parent)
    : QObject(parent)
    , m_installer(needs.installer)
    , m_road(needs)
{
    stand(m_installer.standing());
    connect(&m_road, &HookRoad::changed, this, &HookLink::changed);
    connect(&m_road, &HookRoad::formChanged, this, [this] {
        stand(m_installer.standing());
        Q_EMIT changed();
    });
}

void HookLink::stand(HookInstaller::Standing standing)
{
    const bool were = installed();
    m_standing = standing;
    if (were && !installed())
        m_road.forget();
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
        m_road.prove();
    }
    Q_EMIT changed();
}

void HookLink::remove()
{
    ++m_edits;
    m_error = m_installer.uninstall();
    if (!m_error) {
        stand(HookInstaller::Standing::Absent);
        m_road.forget();
    }
    Q_EMIT changed();
}

void HookLink::turnEnded(Instant since)
{
    if (installed())
        m_road.turnEnded(since);
}

} // namespace velto
