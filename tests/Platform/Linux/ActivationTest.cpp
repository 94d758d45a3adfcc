#include "Platform/Linux/DBusActivation.h"
#include "PrivateBus.h"
#include "RunTests.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

const auto kName = u"dev.velto-tests.Some-App"_s;
const auto kPath = u"/dev/velto_tests/Some_App"_s;

} // namespace

/// One Velto runs; whoever starts a second one, or asks the desktop for it, reaches the first.
class ActivationTest : public QObject {
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_home;

    QString settings() const { return m_home->filePath(u"config/velto"_s); }
    std::unique_ptr<DBusActivation> program(std::chrono::milliseconds patience = std::chrono::seconds(5))
    {
        return std::make_unique<DBusActivation>(
            settings(), kName, [bus = m_bus->connect()] { return bus; }, patience);
    }
    /// Sends what a desktop would, without waiting for the answer, since both ends are in this process.
    void send(const QString &method, const QVariantList &arguments)
    {
        auto message = QDBusMessage::createMethodCall(kName, kPath, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        m_bus->connect().asyncCall(message);
    }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->works())
            QSKIP("no dbus-daemon");
    }
    void cleanup() { m_bus.reset(); }

    void oneProgramForOneFolderOfSettings()
    {
        auto first = program();
        QVERIFY(first->claim());
        QCOMPARE(QFileInfo(settings()).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        const auto second = program();
        QVERIFY(!second->claim());
        DBusActivation elsewhere(m_home->filePath(u"another"_s), kName);
        QVERIFY(elsewhere.claim());
        DBusActivation nowhere(u"/proc/none/velto"_s, kName); // where nothing can be locked it starts
        QVERIFY(nowhere.claim());

        // A child that outlives the first instance, such as a terminal, doesn't hold the lock.
        QProcess child;
        child.start(u"sleep"_s, {u"60"_s});
        QVERIFY(child.waitForStarted());
        first.reset();
        QVERIFY(second->claim());
        child.kill();
        child.waitForFinished();
    }
    void theDesktopReachesIt()
    {
        for (const bool startedByTheBus : {false, true}) {
            init(); // another bus
            const auto first = program();
            first->listen(startedByTheBus);
            const QSignalSpy wanted(first.get(), &Activation::wanted);
            send(u"Activate"_s, {QVariantMap{{u"desktop-startup-id"_s, u"x"_s}}}); // then the first one is the start
            send(u"ActivateAction"_s, {u"open-and-search"_s, QVariant(QVariantList()), QVariantMap()});
            send(u"Open"_s, {QStringList{u"file:///tmp/x"_s}, QVariantMap()});
            QTRY_COMPARE(wanted.size(), startedByTheBus ? 2 : 3);
            QVERIFY(startedByTheBus || wanted.first().first() == u"open"_s);
            QCOMPARE(wanted.at(wanted.size() - 2).first(), u"open-and-search"_s);
            QCOMPARE(wanted.last().first(), u"open"_s);
        }
    }

    void saysSoIfNobodyCanBeReached()
    {
        QVERIFY(!program(std::chrono::milliseconds(1))->handOver({u"open"_s}));
        DBusActivation withoutBus(settings(), kName, [] { return QDBusConnection(u"none"_s); });
        QVERIFY(!withoutBus.handOver({u"open"_s}));
        withoutBus.listen(false); // without effect
    }
};

static const Registered<ActivationTest> kAdded;
#include "ActivationTest.moc"
