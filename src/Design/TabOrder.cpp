#include "Design/TabOrder.h"

#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>

namespace velto {

namespace {

// Controls whose middles are closer than this are in one row.
constexpr double kRow = 6;
// What is taller than a line is placed by its first line: a row comes before the buttons in it.
constexpr double kLine = 28;

// A stop of the Tab key: a control; or all controls of a scrolling area, placed where the area is, however far its content is
// scrolled; or all controls of a card that is beside others.
struct Stop {
    QPointF place;
    QList<QQuickItem *> controls;
    bool first = false; ///< it comes before all that doesn't, wherever it stands
};

QList<QQuickItem *> controlsBelow(QQuickItem *item);

void collect(QQuickItem *item, QList<Stop> &stops, bool first = false)
{
    for (QQuickItem *child : item->childItems()) {
        if (!child->isVisible() || !child->isEnabled())
            continue;
        const bool leads = first || child->property("comesFirst").toBool();
        if (child->activeFocusOnTab())
            stops.append({child->mapToScene({0, std::min(child->height(), kLine) / 2}), {child}, leads});
        if (child->inherits("QQuickFlickable") || child->property("staysTogether").toBool())
            stops.append({child->mapToScene({0, 0}), controlsBelow(child), leads});
        else
            collect(child, stops, leads);
    }
}

/// The controls of these stops, which are sorted by height, row by row from left to right.
QList<QQuickItem *> inRows(QList<Stop>::iterator from, QList<Stop>::iterator to)
{
    QList<QQuickItem *> controls;
    for (auto row = from; row != to;) {
        const auto end = std::find_if(row, to, [&](const Stop &stop) { return stop.place.y() - row->place.y() >= kRow; });
        std::stable_sort(row, end, [](const Stop &left, const Stop &right) { return left.place.x() < right.place.x(); });
        for (; row != end; ++row)
            controls += row->controls;
    }
    return controls;
}

QList<QQuickItem *> controlsBelow(QQuickItem *item)
{
    QList<Stop> stops;
    collect(item, stops);
    std::ranges::stable_sort(stops, {}, [](const Stop &stop) { return stop.place.y(); });
    const auto others = std::stable_partition(stops.begin(), stops.end(), [](const Stop &stop) { return stop.first; });
    return inRows(stops.begin(), others) + inRows(others, stops.end());
}

// The last of the open items that keep the focus inside themselves.
QQuickItem *trapBelow(QQuickItem *item)
{
    QQuickItem *trap = nullptr;
    for (QQuickItem *child : item->childItems()) {
        if (!child->isVisible() || !child->isEnabled())
            continue;
        QQuickItem *inner = trapBelow(child);
        if (inner)
            trap = inner;
        else if (child->property("trapsFocus").toBool())
            trap = item->inherits("QQuickPopupItem") ? item : child; // a part of a dialog stands for the whole dialog
    }
    return trap;
}

} // namespace

QQuickItem *openTrap(const QQuickWindow &window)
{
    return trapBelow(window.contentItem());
}

TabOrder::TabOrder(QQuickWindow &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
    m_window.installEventFilter(this);
}

void TabOrder::step(bool forward)
{
    QQuickItem *const trap = openTrap(m_window);
    const QList<QQuickItem *> controls = controlsBelow(trap ? trap : m_window.contentItem());
    if (controls.isEmpty())
        return;
    const auto count = controls.size();
    const auto now = controls.indexOf(m_window.activeFocusItem());
    const auto next = now < 0 ? (forward ? 0 : count - 1) : (now + (forward ? 1 : count - 1)) % count;
    controls.at(next)->forceActiveFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

bool TabOrder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool forward = key->key() == Qt::Key_Tab && !(key->modifiers() & Qt::ControlModifier);
    const bool backward = key->key() == Qt::Key_Backtab;
    if (!forward && !backward)
        return QObject::eventFilter(watched, event);
    step(forward);
    return true;
}

} // namespace velto
