#include "Platform/Linux/QtDisplays.h"
#include "RunTests.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

/// The camera's housing, from a device tree and a library of panels that stand in for those of a phone.
class HousingTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_system;

    void become(const QByteArray &name)
    {
        const QDir folder(m_system.path());
        QVERIFY(folder.mkpath(u"firmware/devicetree/base"_s));
        QFile file(folder.filePath(u"firmware/devicetree/base/compatible"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(name + '\0');
    }

private Q_SLOTS:
    void machines()
    {
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA)); // no device tree, as on most machines
        become("stand-in,phone");
        QVERIFY(!builtInPanel(m_system.path(), "libno-such-library.so.0"));
        const auto panel = builtInPanel(m_system.path(), PANEL_DATA);
        QVERIFY(panel);
        QCOMPARE(panel->housing, QRect(390, 0, 300, 90)); // and not the hole in the corner
        become("other,phone");
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA));
    }
    void screens()
    {
        const DisplayPanel panel{{1080, 2400}, {390, 0, 300, 90}};
        QCOMPARE(housingOn(panel, {1080, 2400}), QSizeF(300, 90));
        QCOMPARE(housingOn(panel, {360, 800}), QSizeF(100, 30)); // at a scale of 3
        QVERIFY(housingOn(panel, {800, 360}).isEmpty()); // lying on its side
        QCOMPARE(housingOn({{1080, 2400}, {500, 0, 140, 90}}, {1080, 2400}), QSizeF(200, 90)); // a little off the middle
        QVERIFY(isBuiltIn(u"DSI-1"_s));
        QVERIFY(!isBuiltIn(u"HDMI-A-1"_s));
    }
};

static const Registered<HousingTest> kAdded;
#include "HousingTest.moc"
