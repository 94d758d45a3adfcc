#include "Platform/Posix/JsonDefaults.h"
#include "FilesTesting.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/InlineBackground.h"
#include "Platform/FileWriter.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "RunTests.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

constexpr int kCopies = 200; ///< a value of some kilobytes that shows at once if it is half a value

QStringList valueOf(int round)
{
    return QStringList(kCopies, QString::number(round));
}

} // namespace

/// Prints the number of each write once it is done.
[[noreturn]] void writeUntilKilled(const QString &path)
{
    FaultyCalls calls;
    PosixFiles files(calls);
    FakeClock clock;
    ThreadPoolBackground lane(1);
    FileWriter writer(lane, clock);
    JsonDefaults defaults(files, writer, clock, path);
    for (int round = defaults.value(u"value"_s).toStringList().value(0).toInt() + 1;; ++round) {
        defaults.set(u"value"_s, valueOf(round));
        writer.finish(std::chrono::hours(1));
        std::printf("%d\n", round);
        std::fflush(stdout);
    }
}

class JsonDefaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>(scratchTemplate());
        m_path = m_folder->filePath(u"velto/settings.json"_s);
    }

    void typesSurviveARestart()
    {
        const QDateTime moment(QDate(2026, 11, 21), QTime(9, 0, 1, 234));
        for (const QVariant &value :
             QVariantList{false, 7LL, 9007199254740993LL, std::numeric_limits<qint64>::min(), 0.1 + 0.2, 2.0, 1e300,
                          u"größe \"🙂\" \n"_s, u""_s, u"12"_s, moment.toString(Qt::ISODateWithMs), moment, moment.toUTC(),
                          QStringList{u"a"_s, u""_s}, QStringList()}) {
            defaults()->set(u"key"_s, value);
            const auto reopened = defaults();
            QCOMPARE(reopened->value(u"key"_s).typeId(), value.typeId());
            QCOMPARE(reopened->value(u"key"_s), value);
            reopened->set(u"key"_s, QVariant());
            QVERIFY(!defaults()->value(u"key"_s).isValid());
        }
    }

    void theFileIsPrivateAlsoIfItWasnt()
    {
        defaults()->set(u"hookToken"_s, u"secret"_s);
        QCOMPARE(modeOf(m_path), 0600);
        QCOMPARE(modeOf(QFileInfo(m_path).path()), 0700);
        writeFile(m_path, readFile(m_path), 0644);
        const auto opened = defaults();
        QCOMPARE(modeOf(m_path), 0600);
        const int renames = m_calls.renames;
        opened->set(u"hookToken"_s, u"secret"_s); // what it is already
        QCOMPARE(m_calls.renames, renames);
    }

    void whatIsUnknownStaysAndReadsAsNothing()
    {
        QDir().mkpath(QFileInfo(m_path).path());
        writeFile(
            m_path,
            R"({"later":{"a":[1,{"b":null}]},"mixed":["a",1],"none":null,"two":{"date":"x","real":"1"},"bad":{"date":"x"}})");
        const auto opened = defaults();
        for (const auto &key : {u"later"_s, u"mixed"_s, u"none"_s, u"two"_s, u"bad"_s, u"absent"_s})
            QVERIFY2(!opened->value(key).isValid(), qPrintable(key));
        const QJsonObject before = QJsonDocument::fromJson(readFile(m_path)).object();
        opened->set(u"mine"_s, true);
        QJsonObject after = QJsonDocument::fromJson(readFile(m_path)).object();
        QCOMPARE(after.take(u"mine"_s), QJsonValue(true));
        QCOMPARE(after, before);
        const auto removed = [&](const auto &remove) {
            remove();
            QTest::qWait(50); // the system tells
            m_clock.advance(std::chrono::seconds(1));
            return !QFileInfo::exists(QFileInfo(m_path).path());
        };
        for (int times = 0; times < 2; ++times) // by somebody else
            QVERIFY(!removed([this] { QDir(QFileInfo(m_path).path()).removeRecursively(); }));
        QCOMPARE(QJsonDocument::fromJson(readFile(m_path)).object().size(), before.size() + 1);
        QVERIFY(removed([&opened] { opened->clear([](const QString &) {}); }));
        QVERIFY(!opened->value(u"mine"_s).isValid());
        opened->set(u"mine"_s, true);
        QCOMPARE(QJsonDocument::fromJson(readFile(m_path)).object().size(), 1);
    }

    void aDamagedFileIsKeptAside()
    {
        QDir().mkpath(QFileInfo(m_path).path());
        const QByteArray damaged = R"({"openMode":"click","off":[)";
        m_clock.setWallTime(QDateTime(QDate(2026, 11, 15), QTime(19, 20), Qt::UTC));
        for (const auto &name :
             {u"settings.json.damaged-2026-11-15T19-20-00Z"_s, u"settings.json.damaged-2026-11-15T19-20-00Z-2"_s}) {
            writeFile(m_path, damaged);
            const auto opened = defaults();
            QVERIFY(!opened->value(u"openMode"_s).isValid());
            QCOMPARE(readFile(m_path), damaged); // reading alone touches nothing
            opened->set(u"openMode"_s, u"hover"_s);
            opened->set(u"mode"_s, u"ai"_s);
            const QString copy = QFileInfo(m_path).path() + u'/' + name;
            QCOMPARE(readFile(copy), damaged);
            QCOMPARE(modeOf(copy), 0600);
            QCOMPARE(defaults()->value(u"openMode"_s), QVariant(u"hover"_s));
        }
        QCOMPARE(filesIn(QFileInfo(m_path).path()).size(), 3);
    }

    void aFileThatCannotBeReadIsNotWrittenOver()
    {
        defaults()->set(u"old"_s, u"kept"_s);
        m_calls.failAt = m_calls.steps + 1;
        const auto opened = defaults();
        QVERIFY(!opened->value(u"old"_s).isValid());
        m_calls.failAt = m_calls.steps + 1;
        opened->set(u"new"_s, 1);
        QCOMPARE(defaults()->value(u"old"_s), QVariant(u"kept"_s));
        opened->set(u"newer"_s, 2); // the disk is back
        QCOMPARE(opened->value(u"old"_s), QVariant(u"kept"_s));
        // Someone edits the file by hand: only what is set here overrides it.
        writeFile(m_path, R"({"old":"by hand","newer":3,"other":true})");
        opened->set(u"new"_s, 4);
        QCOMPARE(QJsonDocument::fromJson(readFile(m_path)).toJson(QJsonDocument::Compact),
                 QByteArray(R"({"new":4,"newer":3,"old":"by hand","other":true})"));
    }

    void aFolderInItsPlaceIsLeftAlone()
    {
        QDir().mkpath(m_path);
        QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup);
        const int mode = modeOf(m_path);
        const auto opened = defaults();
        QCOMPARE(modeOf(m_path), mode);
        QVERIFY(m_writer.word(m_path).startsWith(u"settings.json can't be read: Is a directory."_s));
        opened->set(u"a"_s, 1);
        QVERIFY(!m_writer.isSaved(m_path));
        QVERIFY(QDir().rmdir(m_path));
        QCOMPARE(m_writer.finish(std::chrono::seconds(1)), QStringList());
        QCOMPARE(defaults()->value(u"a"_s), QVariant(1LL));
    }

    void aKillAtAnyMomentLosesNothingThatWasSet()
    {
        const int kills = qEnvironmentVariable("VELTO_KILLS", u"60"_s).toInt();
        killAtAnyMoment({u"--write-until-killed"_s, m_path}, kills, [this] {
            const QStringList stored = defaults()->value(u"value"_s).toStringList();
            return stored == valueOf(stored.value(0).toInt()) ? stored.value(0).toInt() : -1; // no half a value
        });
        QCOMPARE(filesIn(QFileInfo(m_path).path(), u"*damaged*"_s), QStringList());
    }

private:
    std::unique_ptr<JsonDefaults> defaults() { return std::make_unique<JsonDefaults>(m_files, m_writer, m_clock, m_path); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    FaultyCalls m_calls;
    PosixFiles m_files{m_calls};
    FakeClock m_clock;
    InlineBackground m_lane;
    FileWriter m_writer{m_lane, m_clock};
};

static const Registered<JsonDefaultsTest> registered;

#include "JsonDefaultsTest.moc"
