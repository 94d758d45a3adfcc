#include "OtherProgram.h"
#include "Platform/Linux/StatusIcon.h"
#include "Platform/Linux/TrayStatusItem.h"
#include "RunTests.h"
#include "VirtualDesktop.h"

#include <QApplication>
#include <QMenu>

using namespace velto;
using namespace Qt::StringLiterals;

/// The menu works on a desktop without a tray, over other programs' windows and without the keyboard.
class StatusMenuTest : public QObject {
    Q_OBJECT
    std::unique_ptr<XcbServer> m_server;
    std::unique_ptr<TrayStatusItem> m_item;
    QStringList m_chosen;

    static QMenu *menu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

private Q_SLOTS:
    void init()
    {
        if (QGuiApplication::platformName() != "xcb"_L1 || !VirtualDesktop::canAct())
            QSKIP("no Xvfb, no openbox or no xdotool");
        m_chosen.clear();
        m_server = std::make_unique<XcbServer>();
        m_item = std::make_unique<TrayStatusItem>(*m_server, [] { return QDBusConnection(u"none"_s); });
        const auto choose = [this](const QString &what) { return [this, what] { m_chosen.append(what); }; };
        m_item->show(u"Velto"_s,
                     {{u"Open Velto"_s, {}, choose(u"open"_s)},
                      {u"Settings…"_s, u"Ctrl+,"_s, choose(u"settings"_s)},
                      {u"Welcome & Setup…"_s, {}, choose(u"welcome"_s)},
                      {{}, {}, {}},
                      {u"Quit Velto"_s, u"Ctrl+Q"_s, choose(u"quit"_s)}});
    }
    void cleanup()
    {
        m_item.reset();
        m_server.reset();
    }

    void keysAndEscape()
    {
        QVERIFY(!m_item->inTray());
        m_item->popUp(QPoint(500, 40), [] {});
        QTRY_VERIFY(menu() && menu()->windowHandle() && menu()->windowHandle()->isExposed());
        QCOMPARE(menu()->actions().at(2)->text(), u"Welcome && Setup…"_s);
        VirtualDesktop::act({u"key"_s, u"Escape"_s});
        QTRY_VERIFY(!menu());
        QVERIFY(m_chosen.isEmpty());
        m_item->popUp(QPoint(500, 40), [] {});
        QTRY_VERIFY(menu() && menu()->windowHandle()->isExposed());
        VirtualDesktop::act({u"key"_s, u"ctrl+q"_s});
        QTRY_COMPARE(m_chosen, QStringList{u"quit"_s});
        QVERIFY(!menu());
        m_item->popUp(QPoint(500, 40), [] {});
        QTRY_VERIFY(menu() && menu()->windowHandle()->isExposed());
        VirtualDesktop::act({u"key"_s, u"Down"_s, u"Down"_s, u"Return"_s});
        QTRY_COMPARE(m_chosen.last(), u"settings"_s);
    }
    void aPressElsewhereCloses()
    {
        OtherProgram other;
        const auto window = other.open(QRect(100, 300, 300, 200), QByteArray("w\0W\0", 4));
        QTRY_COMPARE(other.focus(), window);
        m_item->popUp(QPoint(700, 40), [] {});
        QTRY_VERIFY(menu() && menu()->windowHandle()->isExposed());
        VirtualDesktop::act({u"mousemove"_s, u"200"_s, u"400"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY(!menu());
        QVERIFY(m_chosen.isEmpty());
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
            // Down the middle: light outline, gap, light block, dark room, light outline; and nothing half lit in between.
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
