#include "Hooks/HookInstaller.h"
#include "Fixture.h"
#include "Hooks/Hooks.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Posix/FilesTesting.h"
#include "Platform/Posix/PosixFiles.h"
#include "RunTests.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QString kToken = u"0123456789abcdef0123456789abcdef0123456789abcdef"_s;

/// Lets another program write right before the file is put in place.
class MeddledFiles final : public Files {
public:
    std::function<void(const QString &path)> meddle;

    /// What the next reads return instead, in order.
    mutable QByteArrayList torn;

    std::variant<QByteArray, FileError> read(const QString &path, qint64 maximum) const override
    {
        if (maximum > 0 && !torn.isEmpty())
            return torn.takeFirst();
        return m_files.read(path, maximum);
    }
    std::optional<FileError> replace(const QString &path, const QByteArray &bytes, const std::function<bool()> &stillWanted,
                                     Mode mode) override
    {
        const auto meddled = [&] {
            if (meddle)
                meddle(path);
            return !stillWanted || stillWanted();
        };
        return m_files.replace(path, bytes, meddled, mode);
    }

    void sweep(const QString &) override { }

private:
    FaultyCalls m_calls;
    PosixFiles m_files{m_calls};
};

} // namespace

class HookInstallerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.meddle = {};
        m_home = std::make_unique<QTemporaryDir>(scratchTemplate());
        m_folder = m_home->filePath(u".claude"_s);
        m_path = m_folder + u"/settings.json"_s;
        m_clock.setWallTime(QDateTime(QDate(2026, 11, 15), QTime(19, 20), Qt::UTC).toOffsetFromUtc(3600));
    }

    void aNewUserGetsAPrivateFileAndNoBackup()
    {
        HookInstaller installer(m_files, m_clock, m_home->path(), kToken);
        QCOMPARE(installer.install(), std::nullopt);
        QCOMPARE(filesIn(m_folder), QStringList{u"settings.json"_s});
        QCOMPARE(modeOf(m_path), 0600);
        const QJsonObject hooks = QJsonDocument::fromJson(readFile(m_path)).object().value("hooks"_L1).toObject();
        const auto group = [](const QString &command, std::optional<int> timeout) {
            QJsonObject item{{u"type"_s, u"command"_s}, {u"command"_s, command}};
            if (timeout)
                item.insert(u"timeout"_s, *timeout);
            return QJsonArray{QJsonObject{{u"hooks"_s, QJsonArray{item}}}};
        };
        const QJsonObject expected{{u"Stop"_s, group(hookCommand(kToken), {})},
                                   {u"Notification"_s, group(hookCommand(kToken), {})},
                                   {u"PermissionRequest"_s, group(permissionCommand(kToken), 40)}};
        QCOMPARE(hooks, expected);
        QCOMPARE(installer.uninstall(), std::nullopt);
        QCOMPARE(readFile(m_path), QByteArray("{}\n"));
    }

    void eachEditKeepsACopyOfItsOwn()
    {
        const QByteArray settings = fixture("claude-settings/everyday.json");
        prepare(settings, 0644);
        HookInstaller installer(m_files, m_clock, m_home->path(), kToken);
        QCOMPARE(installer.install(), std::nullopt);
        QCOMPARE(modeOf(m_path), 0600); // it contains the secret now
        const QByteArray installed = readFile(m_path);
        QCOMPARE(installer.uninstall(), std::nullopt);
        QCOMPARE(readFile(m_path), settings);

        const QString first = m_path + u".velto-backup-2026-11-15T19-20-00Z"_s;
        QCOMPARE(readFile(first), settings);
        QCOMPARE(modeOf(first), 0600);
        QCOMPARE(readFile(first + u"-2"_s), installed); // within the same second
        QCOMPARE(filesIn(m_folder).size(), 3);
    }

    void whatIsThereIsFoundByItsTextAndReplaced()
    {
        HookInstaller installer(m_files, m_clock, m_home->path(), kToken);
        QVERIFY(!installer.present());
        const auto row = [&](const QByteArray &settings, bool present, bool needsUpgrade) {
            prepare(settings);
            QVERIFY2(installer.present() == present && installer.needsUpgrade() == needsUpgrade, settings.constData());
        };
        const QByteArray token = kToken.toUtf8();
        row("{}", false, false);
        row("127.0.0.1:4747/permission", true, true); // with another secret
        row("127.0.0.1:4747/event " + token, true, true); // from before permission questions
        row("127.0.0.1:4747/permission " + token, true, false);
        row("127.0.0.1:4747/ \xFF" + token, false, false); // not UTF-8
        row(fixture("claude-settings/older-velto.json"), true, true);
        QCOMPARE(installer.install(), std::nullopt);
        row(readFile(m_path), true, false);
        QVERIFY(!readFile(m_path).contains("00112233") && readFile(m_path).contains("say done"));
        QVERIFY(HookInstaller(m_files, m_clock, m_home->path(), u"another"_s).needsUpgrade());
    }

    void whatCannotBeEditedStaysAsItIs()
    {
        const auto row = [this](const QByteArray &settings, mode_t mode, int copies) {
            init();
            prepare(settings, mode);
            HookInstaller installer(m_files, m_clock, m_home->path(), kToken);
            const auto problem = installer.install();
            QVERIFY(problem && !problem->isEmpty());
            QCOMPARE(readFile(m_path), settings);
            QCOMPARE(filesIn(m_folder).size() - 1, copies);
        };
        for (const char *none : {"{", "[]", ""})
            row(none, 0600, 0);
        row("{}", 0444, 1);
    }

    void itsSecretIsMadeOnceAndKept()
    {
        FakeDefaults defaults;
        const auto token = hookToken(defaults);
        QVERIFY(QRegularExpression(u"\\A[0-9a-f]{48}\\z"_s).match(token).hasMatch());
        QCOMPARE(defaults.values.value(u"hookToken"_s), QVariant(token));
        QCOMPARE(hookToken(defaults), token);
        FakeDefaults others;
        QVERIFY(hookToken(others) != token);

        const auto longEnough = u"Any text of 32 characters, kept."_s;
        defaults.values[u"hookToken"_s] = longEnough;
        QCOMPARE(hookToken(defaults), longEnough);
        for (const QVariant &stored :
             {QVariant(longEnough.chopped(1)), QVariant(QStringList{longEnough, longEnough}), QVariant()}) {
            defaults.values[u"hookToken"_s] = stored;
            QCOMPARE(hookToken(defaults).size(), 48);
        }
    }

    void aChangeByAnotherProgramIsTakenIn()
    {
        prepare("{\"model\": \"opus\"}");
        HookInstaller installer(m_files, m_clock, m_home->path(), kToken);
        int left = 2;
        m_files.torn = {"", "{\"model"}; // another program is halfway through writing it
        m_files.meddle = [&](const QString &path) {
            if (path == m_path && left-- > 0)
                writeFile(m_path, "{\"model\": \"opus\", \"added\": " + QByteArray::number(left) + "}");
        };
        QCOMPARE(installer.install(), std::nullopt);
        const QJsonObject settings = QJsonDocument::fromJson(readFile(m_path)).object();
        QCOMPARE(settings.value("added"_L1), QJsonValue(0));
        QVERIFY(settings.contains("hooks"_L1));
        const QStringList copies = filesIn(m_folder, u"*.velto-backup-*"_s); // one, however many attempts
        QCOMPARE(copies.size(), 1);
        QCOMPARE(readFile(m_folder + u'/' + copies[0]), QByteArray("{\"model\": \"opus\", \"added\": 0}"));

        m_files.meddle = [&](const QString &path) {
            if (path == m_path)
                QFile::remove(m_path); // it has gone meanwhile, and doesn't come back
        };
        QCOMPARE(installer.uninstall(), std::nullopt);
        QVERIFY(!readFile(m_path).contains("opus"));
        QFile::remove(m_path); // and one that appears meanwhile
        m_files.meddle = [&](const QString &path) {
            if (path == m_path && !QFile::exists(m_path))
                writeFile(m_path, "{\"first\": true}");
        };
        QCOMPARE(installer.install(), std::nullopt);
        QVERIFY(QJsonDocument::fromJson(readFile(m_path)).object().contains("first"_L1));

        prepare("{}"); // one that keeps changing is left alone
        int turn = 0;
        QByteArray theirs;
        m_files.meddle = [&](const QString &path) {
            if (path != m_path)
                return;
            theirs = "{\"turn\":" + QByteArray::number(++turn) + '}';
            writeFile(m_path, theirs);
        };
        QCOMPARE(installer.install(), u"Another program kept changing your Claude settings file, so Velto left it alone."_s);
        QCOMPARE(readFile(m_path), theirs);
        QVERIFY(turn > 1 && turn < 20);
        QCOMPARE(filesIn(m_folder, u".velto-*"_s), QStringList());
    }

    void eachFailingStepLeavesTheSettingsOldOrNew()
    {
        const QByteArray settings = fixture("claude-settings/everyday.json");
        int refused = 0;
        for (int step = 1;; ++step) {
            init();
            prepare(settings);
            FaultyCalls calls;
            calls.failAt = step;
            PosixFiles files(calls);
            const auto problem = HookInstaller(files, m_clock, m_home->path(), kToken).install();
            QCOMPARE(readFile(m_path).contains(kToken.toUtf8()), !problem);
            const QStringList copies = filesIn(m_folder, u"*.velto-backup-*"_s);
            if (problem)
                QCOMPARE(readFile(m_path), settings);
            else
                QVERIFY(!copies.isEmpty());
            for (const QString &copy : copies)
                QCOMPARE(readFile(m_folder + u'/' + copy), settings);
            refused += problem ? 1 : 0;
            if (calls.steps < step)
                break;
        }
        QVERIFY(refused > 15);
    }

private:
    void prepare(const QByteArray &settings, mode_t mode = 0600)
    {
        QDir().mkpath(m_folder);
        writeFile(m_path, settings, mode);
    }

    std::unique_ptr<QTemporaryDir> m_home;
    QString m_folder;
    QString m_path;
    MeddledFiles m_files;
    FakeClock m_clock;
};

static const Registered<HookInstallerTest> registered;

#include "HookInstallerTest.moc"
