#include "Shell/VeltoPanel.h"

#include "Shell/PanelOutline.h"
#include "Core/UI.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainterPath>
#include <QQuickItem>

namespace velto {

namespace {

// Flattened larger than life, so that the corners come out round.
QRegion pixelsWithin(const QPainterPath &path)
{
    constexpr double kDetail = 16;
    const QPolygonF large = path.toFillPolygon(QTransform::fromScale(kDetail, kDetail));
    return QRegion(QTransform::fromScale(1 / kDetail, 1 / kDetail).map(large).toPolygon());
}

} // namespace

VeltoPanel::VeltoPanel(Clock &clock, UI &ui, const PanelOutline &outline)
    : m_clock(clock)
    , m_ui(ui)
    , m_outline(outline)
{
    setTitle(QStringLiteral("Velto"));
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeRootObjectToView);
    connect(&m_outline, &PanelOutline::changed, this, &VeltoPanel::outlineMoved);
    connect(&m_ui, &UI::compositedChanged, this, &VeltoPanel::outlineMoved);
}

QRegion VeltoPanel::wantedMask() const
{
    const QSizeF shape = m_outline.size();
    const QRectF area((width() - shape.width()) / 2, 0, shape.width(), shape.height());
    if (!m_ui.composited())
        return pixelsWithin(veltoOutline(area, m_outline.radii()));
    const bool narrow = m_outline.panelSize() == PanelSize::Collapsed && area.width() < width() && height() <= area.height();
    return narrow ? QRegion(area.toAlignedRect()) : QRegion();
}

void VeltoPanel::outlineMoved()
{
    // The black is still wide while it moves to a narrower outline, and is cut when it has arrived.
    const QRegion wanted = wantedMask();
    const bool narrower = m_ui.composited() && !wanted.isEmpty() && m_mask != wanted;
    m_settled = narrower ? m_clock.after(kSpringTime, [this] { cut(); }) : nullptr;
    if (!narrower)
        cut();
}

void VeltoPanel::cut()
{
    const QRegion wanted = wantedMask();
    if (wanted == m_mask)
        return;
    m_mask = wanted;
    setMask(wanted);
}

QQuickItem *VeltoPanel::textField() const
{
    QQuickItem *item = contentItem();
    while (item->isFocusScope() && item->scopedFocusItem())
        item = item->scopedFocusItem();
    return item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit") ? item : nullptr;
}

// Resting on the strip opens the panel without the keyboard, and most presses need none. A press into a text field does, and
// one that brings up a form.
bool VeltoPanel::event(QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease)
        return QQuickView::event(event);
    const QPointF place = static_cast<QMouseEvent *>(event)->position();
    const QQuickItem *const before = textField();
    const bool handled = QQuickView::event(event); // mousePressEvent() comes ahead of the items
    const QQuickItem *const field = textField();
    if (field && !isActive() && (field != before || field->contains(field->mapFromScene(place))))
        m_ui.askForKeyboard();
    return handled;
}

void VeltoPanel::focusOutEvent(QFocusEvent *event)
{
    QQuickView::focusOutEvent(event);
    m_ui.focusLost();
}

void VeltoPanel::resizeEvent(QResizeEvent *event)
{
    QQuickView::resizeEvent(event);
    outlineMoved();
    lookForPointer();
}

// A pointer that rests says nothing, and the toolkit goes on to think of it where it was in a window of the old size: a tab far
// from it would light up.
void VeltoPanel::lookForPointer()
{
    if (!m_ui.pointerInside() || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    const QPointF place = QCursor::pos();
    QMouseEvent move(QEvent::MouseMove, mapFromGlobal(place), place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(this, &move);
}

} // namespace velto
