#include "Design/TabOrder.h"

#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <cmath>

namespace velto {

namespace {

// Controls whose middles are less far apart than this stand in one row.
constexpr double kRow = 6;

void collect(QQuickItem *item, QList<QQuickItem *> &controls, QQuickItem *&trap)
{
    for (QQuickItem *child : item->childItems()) {
        if (!child->isVisible() || !child->isEnabled())
            continue;
        if (child->property("trapsFocus").toBool())
            trap = child;
        if (child->activeFocusOnTab())
            controls.append(child);
        collect(child, controls, trap);
    }
}

bool before(QQuickItem *left, QQuickItem *right)
{
    const QPointF a = left->mapToScene({0, left->height() / 2});
    const QPointF b = right->mapToScene({0, right->height() / 2});
    return std::abs(a.y() - b.y()) < kRow ? a.x() < b.x() : a.y() < b.y();
}

} // namespace

TabOrder::TabOrder(QQuickWindow &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
    m_window.installEventFilter(this);
}

void TabOrder::step(bool forward)
{
    QList<QQuickItem *> controls;
    QQuickItem *trap = nullptr;
    collect(m_window.contentItem(), controls, trap);
    if (trap)
        controls.removeIf([trap](QQuickItem *control) { return !trap->isAncestorOf(control); });
    if (controls.isEmpty())
        return;
    std::ranges::stable_sort(controls, before);
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
