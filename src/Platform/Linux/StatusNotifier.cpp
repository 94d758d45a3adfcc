#include "Platform/Linux/StatusNotifier.h"

#include "Platform/Linux/DBusAsk.h"
#include "Platform/Linux/StatusIcon.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QImage>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace velto {

/// "(iiay)": rows of ARGB from the top, not premultiplied, the alpha byte first.
struct TrayPicture {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using TrayPictures = QList<TrayPicture>;

/// "(sa(iiay)ss)"
struct TrayTip {
    QString icon;
    TrayPictures pictures;
    QString title;
    QString text;
};

QDBusArgument &operator<<(QDBusArgument &argument, const TrayPicture &picture)
{
    argument.beginStructure();
    argument << picture.width << picture.height << picture.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayPicture &picture)
{
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayTip &tip)
{
    argument.beginStructure();
    argument << tip.icon << tip.pictures << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayTip &tip)
{
    argument.beginStructure();
    argument >> tip.icon >> tip.pictures >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

namespace {

constexpr auto kWatcher = "org.kde.StatusNotifierWatcher"_L1; // service and interface
constexpr auto kWatcherPath = "/StatusNotifierWatcher"_L1;
constexpr auto kPath = "/StatusNotifierItem"_L1; // where trays look if only a service's name is registered
constexpr auto kMenuPath = "/StatusNotifierMenu"_L1;
constexpr std::array kSizes{16, 22, 24, 32, 48, 64};

TrayPicture picture(int size)
{
    const QImage image = statusIcon(size).convertToFormat(QImage::Format_ARGB32);
    TrayPicture result{size, size, QByteArray(qsizetype(4) * size * size, Qt::Uninitialized)};
    qToBigEndian<quint32>(image.constBits(), qsizetype(size) * size, result.bytes.data());
    return result;
}

} // namespace

/// What the tray reads and calls.
class NotifierInterface final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(velto::TrayPictures IconPixmap READ iconPixmap CONSTANT)
    Q_PROPERTY(velto::TrayTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
public:
    explicit NotifierInterface(StatusNotifier *notifier)
        : QDBusAbstractAdaptor(notifier)
        , m_notifier(notifier)
    {
        connect(notifier, &StatusNotifier::described, this, [this] {
            Q_EMIT NewTitle();
            Q_EMIT NewToolTip();
        });
    }

    static QString category() { return u"ApplicationStatus"_s; }
    static QString id() { return u"velto"_s; }
    QString title() const { return m_notifier->description(); }
    static QString status() { return u"Active"_s; }
    static int windowId() { return 0; }
    static QString iconName() { return {}; }
    static TrayPictures iconPixmap()
    {
        TrayPictures pictures;
        for (const int size : kSizes)
            pictures.append(picture(size));
        return pictures;
    }
    TrayTip toolTip() const { return {{}, {}, m_notifier->description(), {}}; }
    static bool itemIsMenu() { return false; }
    static QDBusObjectPath menu() { return QDBusObjectPath(kMenuPath); }

public Q_SLOTS:
    void Activate(int, int) { Q_EMIT m_notifier->pressed(); }
    void SecondaryActivate(int, int) { Q_EMIT m_notifier->pressed(); }
    void ContextMenu(int, int) { Q_EMIT m_notifier->menuWanted(); }
    void Scroll(int, const QString &) { }

Q_SIGNALS:
    void NewTitle();
    void NewToolTip();

private:
    StatusNotifier *m_notifier;
};

StatusNotifier::StatusNotifier(QDBusConnection bus, const QString &description, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_description(description)
{
    qDBusRegisterMetaType<TrayPicture>();
    qDBusRegisterMetaType<TrayPictures>();
    qDBusRegisterMetaType<TrayTip>();
    new NotifierInterface(this); // owned by its parent
    m_bus.registerObject(kPath, this, QDBusConnection::ExportAdaptors);
    m_bus.registerObject(kMenuPath, &m_menu, QDBusConnection::ExportAdaptors);
}

StatusNotifier::~StatusNotifier()
{
    m_bus.unregisterObject(kMenuPath);
    m_bus.unregisterObject(kPath);
}

void StatusNotifier::describe(const QString &description)
{
    if (std::exchange(m_description, description) != description)
        Q_EMIT described();
}

void StatusNotifier::announce()
{
    ask(m_bus,
        {.service = kWatcher,
         .path = kWatcherPath,
         .interface = kWatcher,
         .method = u"RegisterStatusNotifierItem"_s,
         .arguments = {m_bus.baseService()}},
        this, [](const QVariant &) {});
}

} // namespace velto

#include "StatusNotifier.moc"
