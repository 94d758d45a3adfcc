#include "Design/ItemAccessible.h"

#include "Design/TabOrder.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The object that `Accessible.name` and the like create for an item; null if there is none. The toolkit's own check boxes and
/// switches come with one already, which stays empty beside the one that is written to.
QObject *attachedTo(const QObject *item)
{
    QObject *found = nullptr;
    for (QObject *child : item->children()) {
        if (!child->inherits("QQuickAccessibleAttached"))
            continue;
        if (child->property("role").toInt() != QAccessible::NoRole)
            return child;
        if (!found)
            found = child;
    }
    return found;
}

bool isIgnored(const QObject *attached)
{
    return attached->property("ignored").toBool();
}

/// Judged by class, not by role: screen readers ask as soon as anything happens, which is before the role is known, and keep
/// the answer.
bool canBePressed(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton") || item->inherits("QQuickComboBox")
        || item->metaObject()->indexOfProperty("pressable") >= 0;
}

/// What a screen reader finds inside, skipping mere containers.
void collectInside(const QQuickItem *item, QList<QQuickItem *> &inside)
{
    for (QQuickItem *child : item->childItems()) {
        const QObject *attached = attachedTo(child);
        if (attached && !isIgnored(attached))
            inside.append(child);
        else
            collectInside(child, inside);
    }
}

QList<QQuickItem *> inside(const QQuickItem *item)
{
    QList<QQuickItem *> result;
    collectInside(item, result);
    return result;
}

/// Whether a dialog or a menu lies over it, which also takes the pointer's presses.
bool isCovered(const QQuickItem *item)
{
    const QQuickItem *trap = item->window() ? openTrap(*item->window()) : nullptr;
    return trap && trap != item && !trap->isAncestorOf(item);
}

/// Something to press. Its name, role and state are the properties of the attached object.
class ItemAccessible final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit ItemAccessible(QQuickItem *item)
        : QAccessibleObject(item)
    {
        QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
            QAccessible::State changed;
            changed.disabled = true;
            QAccessibleStateChangeEvent event(item, changed);
            QAccessible::updateAccessibility(&event);
        });
    }

    QAccessible::Role role() const override { return QAccessible::Role(attached()->property("role").toInt()); }
    QString text(QAccessible::Text text) const override
    {
        if (text == QAccessible::Name)
            return attached()->property("name").toString();
        return text == QAccessible::Description ? attached()->property("description").toString() : QString();
    }
    QAccessible::State state() const override;
    QRect rect() const override
    {
        const QQuickWindow *window = item()->window();
        const QRect inWindow = item()->mapRectToScene(QRectF({}, item()->size())).toAlignedRect();
        return window ? QRect(window->mapToGlobal(inWindow.topLeft()), inWindow.size()) : QRect();
    }
    QWindow *window() const override { return item()->window(); }

    QAccessibleInterface *parent() const override
    {
        for (QQuickItem *above = item()->parentItem(); above && above->parentItem(); above = above->parentItem()) {
            const QObject *attached = attachedTo(above);
            if (attached && !isIgnored(attached))
                return QAccessible::queryAccessibleInterface(above);
        }
        return QAccessible::queryAccessibleInterface(item()->window());
    }
    int childCount() const override { return int(inside(item()).size()); }
    QAccessibleInterface *child(int index) const override
    {
        QQuickItem *found = inside(item()).value(index);
        return found ? QAccessible::queryAccessibleInterface(found) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return int(inside(item()).indexOf(qobject_cast<QQuickItem *>(child->object())));
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }
    QStringList actionNames() const override
    {
        if (!item()->isEnabled())
            return {};
        return {toggles() ? toggleAction() : pressAction(), setFocusAction()};
    }
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QQuickItem *item() const { return static_cast<QQuickItem *>(object()); }
    bool toggles() const { return role() == QAccessible::CheckBox; }

    QObject *attached() const { return attachedTo(item()); } // the item's child, never null
};

QAccessible::State ItemAccessible::state() const
{
    const auto is = [properties = attached()](const char *name) { return properties->property(name).toBool(); };
    QAccessible::State state;
    state.disabled = !item()->isEnabled();
    const QQuickWindow *window = item()->window();
    state.invisible = !item()->isVisible() || qFuzzyIsNull(item()->opacity()) || !window || !window->isVisible();
    state.offscreen = window && !QRect(window->position(), window->size()).intersects(rect());
    state.focusable = item()->activeFocusOnTab() || is("focusable");
    state.focused = item()->hasActiveFocus();
    state.checkable = is("checkable");
    state.checked = is("checked");
    state.selectable = is("selectable");
    state.selected = is("selected");
    state.pressed = is("pressed");
    state.defaultButton = is("defaultButton");
    const QVariant expanded = item()->property("expanded"); // the attached object has none
    state.expandable = expanded.isValid();
    state.expanded = expanded.toBool();
    state.collapsed = expanded.isValid() && !expanded.toBool();
    return state;
}

void ItemAccessible::doAction(const QString &name)
{
    if (!item()->isEnabled() || isCovered(item()))
        return;
    if (name == setFocusAction())
        item()->forceActiveFocus(Qt::OtherFocusReason);
    else if (name == toggleAction() || name == pressAction())
        QMetaObject::invokeMethod(attached(), toggles() ? "toggleAction" : "pressAction");
}

QAccessibleInterface *interfaceOf(const QString &, QObject *object)
{
    auto *item = qobject_cast<QQuickItem *>(object);
    QObject *attached = item ? attachedTo(item) : nullptr;
    if (!attached || isIgnored(attached) || !canBePressed(item))
        return nullptr;
    return new ItemAccessible(item);
}

} // namespace

void tellWhatIsGreyed()
{
    static const bool once = [] {
        QAccessible::installFactory(&interfaceOf);
        return true;
    }();
    Q_UNUSED(once)
}

} // namespace velto
