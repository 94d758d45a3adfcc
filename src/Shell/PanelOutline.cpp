#include "Shell/PanelOutline.h"

#include "Hub/Hub.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/UI.h"

namespace velto {

PanelOutline::PanelOutline(const Hub &hub, const UI &ui, const CollapsedStrip &strip, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_ui(ui)
    , m_strip(strip)
    , m_now(read())
{
    connect(&m_hub, &Hub::peekChanged, this, &PanelOutline::update);
    connect(&m_ui, &UI::expandedChanged, this, &PanelOutline::update);
    connect(&m_ui, &UI::hoveringChanged, this, &PanelOutline::update);
    connect(&m_ui, &UI::veltoChanged, this, &PanelOutline::update);
    connect(&m_strip, &CollapsedStrip::changed, this, &PanelOutline::update);
}

PanelOutline::Shape PanelOutline::read() const
{
    if (m_ui.expanded())
        return {PanelSize::Expanded, kExpandedSize, {14, 26}};
    const QSizeF housing = m_ui.velto();
    if (m_hub.hasPeek() || m_ui.hovering())
        return {PanelSize::Peeking, velto::panelSize(housing, PanelSize::Peeking), {6, 16}};
    return {PanelSize::Collapsed, m_strip.quiet() ? housing : velto::panelSize(housing, PanelSize::Collapsed), {6, 10}};
}

void PanelOutline::update()
{
    const Shape shape = read();
    if (shape == m_now)
        return;
    m_now = shape;
    Q_EMIT changed();
}

} // namespace velto
