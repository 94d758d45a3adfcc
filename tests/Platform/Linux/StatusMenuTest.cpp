#include "OtherProgram.h"
#include "Platform/Linux/StatusIcon.h"
#include "Platform/Linux/TrayStatusItem.h"
#include "PrivateBus.h"
#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>

using namespace velto;
using namespace Qt::StringLiterals;

/// The icon in the tray, and its menu.
class StatusMenuTest : public QObject {
    Q_OBJECT
    XcbServer m_server;
    std::unique_ptr<TrayStatusItem> m_item;
    QStringList m_heard;

    void show(const std::function<QDBusConnection()> &bus)
    {
        m_heard.clear();
        m_item = std::make_unique<TrayStatusItem>(m_server, bus);
        m_item->show(u"Velto"_s,
                     {{u"Open Velto"_s, {}, {}, [this] { m_heard += u"open"_s; }},
                      {},
                      {u"A_b & c…"_s, Qt::CTRL | Qt::Key_Comma, {}, [this] { m_heard += u"settings"_s; }}},
                     [this] { m_heard += u"menu"_s; });
    }

private Q_SLOTS:
    void cleanup() { m_item.reset(); }

    void anOlderTrayThatComesLaterAndAgain()
    {
        show([] { return QDBusConnection(u"none"_s); });
        QVERIFY(!m_item->inTray());
        for (int round = 0; round < 2; ++round) {
            OtherProgram tray;
            const auto owner = tray.open(QRect(300, 700, 100, 40), QByteArray("t\0T\0", 4), false, false);
            xcb_set_selection_owner(tray.connection(), owner, tray.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
            xcb_flush(tray.connection());
            QTRY_VERIFY(m_item->inTray());
            auto icon = kNoWindow; // what asks to be taken in
            const auto asked = [&] {
                while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(tray.connection())})
                    if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE)
                        icon = reinterpret_cast<xcb_client_message_event_t *>(event.get())->data.data32[2];
                return icon != kNoWindow;
            };
            QTRY_VERIFY(asked());
            xcb_reparent_window(tray.connection(), icon, owner, 10, 4);
            const quint32 size[] = {32, 32};
            xcb_configure_window(tray.connection(), icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
            xcb_map_window(tray.connection(), icon);
            xcb_flush(tray.connection());
            QTRY_VERIFY(m_server.viewable(icon));
            // Its light block, with the tray's own colour at the corner.
            const auto pixel = [&](int x, int y) {
                const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
                    tray.connection(),
                    xcb_get_image(tray.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, icon, qint16(x), qint16(y), 1, 1, ~0U), nullptr));
                return image ? *reinterpret_cast<quint32 *>(xcb_get_image_data(image.get())) & 0xffffff : 0;
            };
            QTRY_COMPARE(pixel(16, 10), 0xf4f4f4U);
            QCOMPARE(pixel(0, 0), 0x336699U);
            m_heard.clear();
            QVERIFY(VirtualDesktop::act({u"mousemove"_s, u"326"_s, u"720"_s, u"click"_s, u"1"_s, u"click"_s, u"3"_s}));
            QTRY_COMPARE(m_heard, QStringList({u"open"_s, u"menu"_s}));
            tray.close(owner);
            QTRY_VERIFY(!m_item->inTray());
        }
    }

    void aTrayOnTheBus()
    {
        PrivateBus bus;
        if (!bus.works())
            QSKIP("no dbus-daemon");
        const auto ours = bus.connect();
        show([ours] { return ours; });
        QTest::qWait(100);
        QVERIFY(!m_item->inTray());
        const auto watch = [&] {
            auto watcher = std::make_unique<PlayedService>(bus.connect(), u"org.kde.StatusNotifierWatcher"_s);
            watcher->answers = {{u"Get:IsStatusNotifierHostRegistered"_s, true}, {u"RegisterStatusNotifierItem"_s, true}};
            return watcher;
        };
        // One that ends and comes back is told again.
        for (int round = 0; round < 2; ++round) {
            const auto watcher = watch();
            QTRY_COMPARE(watcher->asked.count(u"RegisterStatusNotifierItem"_s), 1);
            QVERIFY(m_item->inTray());
            if (round == 0)
                continue;
            const auto host = bus.connect();
            const auto call = [&](const QString &path, const QString &interface, const QString &method,
                                  const QVariantList &arguments) {
                auto message = QDBusMessage::createMethodCall(ours.baseService(), path, interface, method);
                message.setArguments(arguments);
                const auto reply = host.asyncCall(message);
                if (!QTest::qWaitFor([&] { return reply.isFinished(); }))
                    return QVariant();
                return reply.reply().arguments().value(reply.reply().arguments().size() > 1 ? 1 : 0);
            };
            const auto onIcon = [&](const QString &method) {
                call(u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, method, {1, 2});
            };
            const auto onMenu = [&](const QString &method, const QVariantList &arguments) {
                return call(u"/StatusNotifierMenu"_s, u"com.canonical.dbusmenu"_s, method, arguments);
            };
            onIcon(u"Activate"_s);
            onIcon(u"ContextMenu"_s);
            QCOMPARE(onMenu(u"GetProperty"_s, {2, u"type"_s}).value<QDBusVariant>().variant().toString(), u"separator"_s);
            QCOMPARE(onMenu(u"GetProperty"_s, {3, u"label"_s}).value<QDBusVariant>().variant().toString(), u"A__b & c…"_s);
            const auto layout = onMenu(u"GetLayout"_s, {0, -1, QStringList()}).value<QDBusArgument>();
            QCOMPARE(layout.currentSignature(), u"(ia{sv}av)"_s);
            for (const int chosen : {3, 2, 0, -1, 99})
                onMenu(u"Event"_s, {chosen, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
            onMenu(u"Event"_s, {1, u"hovered"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
            QTRY_COMPARE(m_heard, QStringList({u"open"_s, u"menu"_s, u"settings"_s}));
        }
        QTRY_VERIFY(!m_item->inTray());
    }

    void iconIsSharp()
    {
        for (const int size : {16, 22, 24, 32, 48}) {
            const auto image = statusIcon(size);
            QCOMPARE(image.size(), QSize(size, size));
            // Down the middle: light outline, gap, light block, dark room, light outline, with no half-lit pixels in between.
            QString column;
            for (int y = 0; y < size; ++y) {
                const auto colour = image.pixelColor(size / 2, y);
                const auto sign = colour.lightness() > 200 && colour.alpha() > 250 ? u'L' : colour.lightness() < 20 ? u'd' : u'?';
                if (column.isEmpty() || column.back() != sign)
                    column.append(sign);
            }
            QCOMPARE(column, u"dLdLdLd"_s);
        }
    }
};

static const Registered<StatusMenuTest> kAdded;
#include "StatusMenuTest.moc"
