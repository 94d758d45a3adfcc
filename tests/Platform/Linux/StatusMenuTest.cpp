#include "OtherProgram.h"
#include "Platform/Linux/StatusIcon.h"
#include "Platform/Linux/TrayStatusItem.h"
#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QApplication>

using namespace velto;
using namespace Qt::StringLiterals;

/// The icon in the tray.
class StatusMenuTest : public QObject {
    Q_OBJECT
    std::unique_ptr<XcbServer> m_server;
    std::unique_ptr<TrayStatusItem> m_item;

private Q_SLOTS:
    void init()
    {
        if (QGuiApplication::platformName() != "xcb"_L1 || !VirtualDesktop::canAct())
            QSKIP("no Xvfb, no openbox or no xdotool");
        m_server = std::make_unique<XcbServer>();
        m_item = std::make_unique<TrayStatusItem>(*m_server, [] { return QDBusConnection(u"none"_s); });
        m_item->show(u"Velto"_s, {{u"Open Velto"_s, {}, {}, [] {}}});
    }
    void cleanup()
    {
        m_item.reset();
        m_server.reset();
    }

    void trayThatComesLater()
    {
        QVERIFY(!m_item->inTray());
        OtherProgram tray;
        const auto owner = tray.open(QRect(0, 780, 100, 20), QByteArray("t\0T\0", 4), false, false);
        xcb_set_selection_owner(tray.connection(), owner, tray.atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
        xcb_flush(tray.connection());
        QTRY_VERIFY(m_item->inTray());
    }
    void iconIsSharp()
    {
        const auto icon = statusIcon();
        for (const int size : {16, 22, 24, 32, 48}) {
            const auto image = icon.pixmap(QSize(size, size)).toImage();
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
