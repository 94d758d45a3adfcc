#include "Shell/PanelOutline.h"

#include "Core/UI.h"
#include "Hub/Hub.h"
#include "Shell/CollapsedStrip.h"

#include <algorithm>

namespace velto {

namespace {

constexpr double kMenuWidth = 260;

} // namespace

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
    connect(&m_ui, &UI::menuHeightChanged, this, &PanelOutline::update);
    for (const auto grown : {&UI::roomChanged, &UI::textScaleChanged}) {
        connect(&m_ui, grown, this, &PanelOutline::openSizeChanged);
        connect(&m_ui, grown, this, &PanelOutline::update);
    }
    connect(&m_ui, &UI::unfoldedHeightChanged, this, &PanelOutline::update);
    connect(&m_ui, &UI::veltoChanged, this, &PanelOutline::update);
    connect(&m_ui, &UI::veltoChanged, this, &PanelOutline::factRoomChanged);
    connect(&m_strip, &CollapsedStrip::changed, this, &PanelOutline::update);
}

QSizeF PanelOutline::openSize() const
{
    return expandedSize(m_ui.room(), m_ui.textScale());
}

QSizeF PanelOutline::row() const
{
    return peekRowSize(m_ui.room(), m_ui.textScale());
}

double PanelOutline::mostUnfolded() const
{
    return velto::mostUnfolded(m_ui.room().height(), m_ui.textScale());
}

double PanelOutline::factRoom() const
{
    return velto::factRoom(m_ui.velto());
}

double PanelOutline::unfolded() const
{
    return std::min(m_ui.unfoldedHeight(), mostUnfolded());
}

PanelOutline::Shape PanelOutline::read() const
{
    Shape shape = withoutMenu();
    if (const double menu = m_ui.menuHeight(); menu > 0) {
        shape.size = {std::max(shape.size.width(), kMenuWidth), shape.size.height() + menu};
        shape.radii = {6, 16};
    }
    shape.size = shape.size.boundedTo(m_ui.room());
    return shape;
}

PanelOutline::Shape PanelOutline::withoutMenu() const
{
    if (m_ui.expanded())
        return {PanelSize::Expanded, openSize(), {14, 26}};
    const QSizeF housing = m_ui.velto();
    if (m_hub.asking() && unfolded() > 0)
        return {PanelSize::Unfolded, velto::panelSize(housing, PanelSize::Unfolded, row(), unfolded()), {6, 16}};
    if (m_hub.hasPeek() || m_ui.hovering())
        return {PanelSize::Peeking, velto::panelSize(housing, PanelSize::Peeking, row()), {6, 16}};
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
