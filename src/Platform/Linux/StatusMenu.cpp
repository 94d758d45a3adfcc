#include "Platform/Linux/StatusMenu.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QKeySequence>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace velto {

/// "(ia{sv}av)": an item with those below it.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

/// "(ia{sv})"
struct MenuProperties {
    int id = 0;
    QVariantMap properties;
};

/// "(isvu)"
struct MenuEvent {
    int id = 0;
    QString event;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const MenuLayout &layout)
{
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const auto &child : layout.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuLayout &layout)
{
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(qdbus_cast<MenuLayout>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuProperties &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuProperties &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.event << event.data << event.time;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.event >> event.data >> event.time;
    argument.endStructure();
    return argument;
}

namespace {

constexpr auto kClicked = "clicked"_L1;

/// The combination as the menu's protocol writes it: {{"Control", "comma"}}.
QList<QStringList> written(QKeyCombination combination)
{
    QStringList keys;
    const auto modifiers = combination.keyboardModifiers();
    for (const auto &[modifier, name] : {std::pair{Qt::ControlModifier, u"Control"_s},
                                         {Qt::AltModifier, u"Alt"_s},
                                         {Qt::ShiftModifier, u"Shift"_s},
                                         {Qt::MetaModifier, u"Super"_s}})
        if (modifiers.testFlag(modifier))
            keys.append(name);
    const QString key = QKeySequence(combination.key()).toString(QKeySequence::PortableText);
    keys.append(key == ","_L1 ? u"comma"_s : key);
    return {keys};
}

QVariantMap propertiesOf(const MenuItem &item)
{
    if (item.title.isEmpty())
        return {{u"type"_s, u"separator"_s}};
    // A single underscore would make the next letter the item's access key.
    QVariantMap properties{{u"label"_s, QString(item.title).replace(u'_', "__"_L1)}};
    if (item.key != QKeyCombination())
        properties.insert(u"shortcut"_s, QVariant::fromValue(written(item.key)));
    return properties;
}

} // namespace

/// What the tray's host calls. https://github.com/AyatanaIndicators/libdbusmenu/blob/master/libdbusmenu-glib/dbus-menu.xml
class MenuInterface final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
public:
    explicit MenuInterface(StatusMenu *menu)
        : QDBusAbstractAdaptor(menu)
        , m_menu(menu)
    {
        qDBusRegisterMetaType<MenuLayout>();
        qDBusRegisterMetaType<MenuProperties>();
        qDBusRegisterMetaType<QList<MenuProperties>>();
        qDBusRegisterMetaType<MenuEvent>();
        qDBusRegisterMetaType<QList<MenuEvent>>();
        qDBusRegisterMetaType<QList<QStringList>>();
        qDBusRegisterMetaType<QList<int>>();
        connect(menu, &StatusMenu::itemsChanged, this, [this] { Q_EMIT LayoutUpdated(++m_revision, 0); });
    }

    static uint version() { return 3; }
    static QString status() { return u"normal"_s; }
    static QString textDirection() { return u"ltr"_s; }

public Q_SLOTS:
    uint GetLayout(int parent, int depth, const QStringList &, velto::MenuLayout &layout)
    {
        layout.id = parent;
        layout.properties = properties(parent);
        if (parent == 0 && depth != 0)
            for (int id = 1; m_menu->item(id); ++id)
                layout.children.append({id, properties(id), {}});
        return m_revision;
    }
    QList<velto::MenuProperties> GetGroupProperties(const QList<int> &ids, const QStringList &)
    {
        QList<MenuProperties> all;
        for (const int id : ids)
            if (id == 0 || m_menu->item(id))
                all.append({id, properties(id)});
        return all;
    }
    QDBusVariant GetProperty(int id, const QString &name) { return QDBusVariant(properties(id).value(name, QString())); }
    void Event(int id, const QString &event, const QDBusVariant &, uint)
    {
        if (event == kClicked)
            m_menu->choose(id);
    }
    QList<int> EventGroup(const QList<velto::MenuEvent> &events)
    {
        QList<int> unknown;
        for (const auto &event : events) {
            if (event.id != 0 && !m_menu->item(event.id))
                unknown.append(event.id);
            else
                Event(event.id, event.event, event.data, event.time);
        }
        return unknown;
    }
    /// Whether the menu is another one now than the last layout said.
    bool AboutToShow(int) { return false; }
    QList<int> AboutToShowGroup(const QList<int> &, QList<int> &unknown)
    {
        unknown.clear();
        return {};
    }

Q_SIGNALS:
    void LayoutUpdated(uint revision, int parent);

private:
    QVariantMap properties(int id) const
    {
        if (id == 0)
            return {{u"children-display"_s, u"submenu"_s}};
        const auto *item = m_menu->item(id);
        return item ? propertiesOf(*item) : QVariantMap();
    }

    StatusMenu *m_menu;
    uint m_revision = 1;
};

StatusMenu::StatusMenu(QObject *parent)
    : QObject(parent)
{
    new MenuInterface(this); // owned by its parent
}

void StatusMenu::setItems(std::vector<MenuItem> items)
{
    m_items = std::move(items);
    Q_EMIT itemsChanged();
}

const MenuItem *StatusMenu::item(int id) const
{
    return id > 0 && std::size_t(id) <= m_items.size() ? &m_items[std::size_t(id) - 1] : nullptr;
}

// The tray gets its answer first: the chosen action may end the program.
void StatusMenu::choose(int id)
{
    if (const auto *chosen = item(id); chosen && chosen->action)
        QMetaObject::invokeMethod(
            this, [run = chosen->action] { run(); }, Qt::QueuedConnection);
}

} // namespace velto

Q_DECLARE_METATYPE(velto::MenuLayout)

#include "StatusMenu.moc"
