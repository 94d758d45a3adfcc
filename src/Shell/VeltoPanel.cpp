#include "Shell/VeltoPanel.h"

#include "Core/UI.h"
#include "Design/Theme.h"
#include "Platform/Clock.h"
#include "Platform/PanelWindow.h"
#include "Shell/PanelOutline.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainterPath>
#include <QQuickItem>

namespace velto {

namespace {

constexpr int kTremble = 2; // logical pixels; a resting hand moves no further

// Flattened at a larger scale, so that the corners come out round.
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
    connect(&m_outline, &PanelOutline::changed, this, &VeltoPanel::outlineChanged);
    connect(&m_ui, &UI::compositedChanged, this, &VeltoPanel::outlineMoved);
    connect(&m_ui, &UI::menuOpenChanged, this, &VeltoPanel::letPointerRest);
    connect(&m_ui, &UI::keyboardKeptChanged, this, [this] {
        if (Theme *theme = Theme::of(engine()))
            theme->setKeyboardElsewhere(m_ui.keyboardKept());
    });
}

VeltoPanel::~VeltoPanel()
{
    // The views change the outline once more while they are destroyed, and this is no VeltoPanel any more by then.
    disconnect(&m_outline, nullptr, this, nullptr);
    disconnect(&m_ui, nullptr, this, nullptr);
}

QRegion VeltoPanel::pixelsOf(QSizeF shape) const
{
    const QRectF area((width() - shape.width()) / 2, 0, shape.width(), shape.height());
    QRegion outline = pixelsWithin(veltoOutline(area, m_outline.radii()));
    if (!m_ui.composited())
        return outline;
    // A pixel more at the sides and below, so that the soft edge isn't cut.
    QRegion around = outline;
    for (const QPoint &step : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, 1)})
        around += outline.translated(step);
    return around;
}

void VeltoPanel::outlineChanged()
{
    letPointerRest();
    outlineMoved();
}

// What appears under a resting pointer lights up only when the pointer moves, and what a menu covers shows no help text.
void VeltoPanel::letPointerRest()
{
    const auto place = m_ui.pointer ? m_ui.pointer() : std::nullopt;
    m_rest = place ? mapToGlobal(*place) : QPoint();
    if (Theme *theme = Theme::of(engine()))
        theme->setPointerRests(true);
}

void VeltoPanel::outlineMoved()
{
    m_settled.reset();
    const auto arrived = [this] {
        m_swept = m_outline.size();
        const QRegion outline = pixelsOf(m_swept);
        cut(outline, outline);
    };
    if (!m_ui.composited()) {
        arrived();
        return;
    }
    // The black is still moving towards the new outline; nothing is cut away before it has arrived.
    m_swept = m_swept.expandedTo(m_outline.size());
    cut(pixelsOf(m_swept), {});
    m_settled = m_clock.after(kSpringTime, arrived);
}

void VeltoPanel::cut(const QRegion &taking, const QRegion &drawn)
{
    const bool composited = m_ui.composited();
    const QRegion limit = composited ? taking : QRegion();
    if (!m_limited || limit != m_taking)
        m_limited = desktop && desktop->limitPresses(limit);
    m_taking = limit;
    // Compositors can have a shadow or a blur around all of a window, also where nothing is to be seen. One that keeps its width
    // is far wider than the strip, and a mask does no harm there.
    const bool whole = composited && m_limited && !desktop->keepsWidth();
    if (const QRegion mask = whole ? QRegion() : drawn; mask != this->mask())
        setMask(mask);
}

QQuickItem *VeltoPanel::textField() const
{
    QQuickItem *item = contentItem();
    while (item->isFocusScope() && item->scopedFocusItem())
        item = item->scopedFocusItem();
    return item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit") ? item : nullptr;
}

// Resting on the strip opens the panel without the keyboard, and most presses don't need it. A press into a text field does,
// and so does one that brings up a form.
bool VeltoPanel::event(QEvent *event)
{
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress) {
        const QPoint moved = static_cast<QMouseEvent *>(event)->globalPosition().toPoint() - m_rest;
        Theme *const theme = Theme::of(engine());
        if (theme && (event->type() == QEvent::MouseButtonPress || moved.manhattanLength() > kTremble))
            theme->setPointerRests(false);
    }
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease)
        return QQuickView::event(event);
    const QPointF place = static_cast<QMouseEvent *>(event)->position();
    const QQuickItem *const before = textField();
    const bool handled = QQuickView::event(event); // not in mousePressEvent(), which runs before the items get the press
    const QQuickItem *const field = textField();
    if (field && !isActive() && (field != before || field->contains(field->mapFromScene(place))))
        m_ui.askForKeyboard();
    return handled;
}

void VeltoPanel::focusInEvent(QFocusEvent *event)
{
    QQuickView::focusInEvent(event);
    m_ui.setKeyboard(true);
}

void VeltoPanel::focusOutEvent(QFocusEvent *event)
{
    QQuickView::focusOutEvent(event);
    m_ui.setKeyboard(false);
    m_ui.focusLost();
}

void VeltoPanel::resizeEvent(QResizeEvent *event)
{
    QQuickView::resizeEvent(event);
    outlineMoved();
    lookForPointer();
}

// A resting pointer sends no events, so the toolkit would keep its position from before the resize and light up a tab far from
// it.
void VeltoPanel::lookForPointer()
{
    if (!m_ui.pointerInside() || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    const auto place = m_ui.pointer ? m_ui.pointer() : std::nullopt;
    if (!place)
        return;
    QMouseEvent move(QEvent::MouseMove, *place, mapToGlobal(*place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(this, &move);
}

} // namespace velto
