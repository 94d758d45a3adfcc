#include "Core/Prefs.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Places.h"
#include "RunTests.h"

#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace velto {

/// The user's choices, across a restart and with a damaged store.
class PrefsTest : public QObject {
    Q_OBJECT

    FakeClock m_clock;
    Places m_places{QDir::tempPath() + QLatin1String("/nobody"), {}, {}, {}};

private Q_SLOTS:
    void unknownAndMistypedValuesReadAsDefaults()
    {
        FakeDefaults defaults;
        defaults.values = {
            {u"openMode"_s, u"telepathy"_s},
            {u"mode"_s, 3LL},
            {u"quietWhileRecording"_s, u"no"_s},
            {u"peekOnFinish"_s, false},
            {u"modulesOff"_s, u"agents"_s},
            {u"dailyBudget"_s, 2.5},
            {u"meetingStart"_s, u"tomorrow"_s},
            {u"calendarSource"_s, u"google"_s},
            {u"dismissedAgentIDs"_s, QStringList{u"a"_s, u"a"_s}},
        };
        const Prefs prefs(defaults, m_places, m_clock);
        QCOMPARE(prefs.openMode(), Prefs::OpenMode::Hover);
        QCOMPARE(prefs.mode(), Prefs::Mode::Custom);
        QVERIFY(prefs.quietWhileRecording());
        QVERIFY(!prefs.peekOnFinish());
        QCOMPARE(prefs.off(), QSet<QString>{u"calendar"_s});
        QCOMPARE(prefs.dailyBudget(), 0);
        QCOMPARE(prefs.meetingStart(), m_clock.wallTime().addSecs(3600));
        QCOMPARE(prefs.calendarSource(), Prefs::CalendarSource::Google);
        QCOMPARE(prefs.dismissedAgentIDs(), QSet<QString>{u"a"_s});
    }

    void presetsChooseModulesAndOneSwitchDropsThePreset()
    {
        FakeDefaults defaults;
        Prefs prefs(defaults, m_places, m_clock);
        prefs.selectMode(Prefs::Mode::Sales);
        QCOMPARE(prefs.off(), (QSet<QString>{u"agents"_s, u"prs"_s, u"media"_s, u"usage"_s, u"repos"_s}));
        prefs.selectMode(Prefs::Mode::Custom);
        QCOMPARE(prefs.off().size(), 5);
        QCOMPARE(defaults.values.value(u"mode"_s).toString(), u"custom"_s);

        prefs.selectMode(Prefs::Mode::Engineer);
        prefs.set(Prefs::Module::Agents, true); // already on
        QCOMPARE(prefs.mode(), Prefs::Mode::Custom);
        QCOMPARE(prefs.off(), (QSet<QString>{u"work"_s, u"media"_s}));
        prefs.set(Prefs::Module::Agents, false);
        QVERIFY(!prefs.isOn(Prefs::Module::Agents));
        prefs.selectMode(Prefs::Mode::All);
        QVERIFY(prefs.off().isEmpty());
    }

    void repositoriesAreLookedForInTheUsualFoldersThatExist()
    {
        const QTemporaryDir home;
        QVERIFY(QDir(home.path()).mkdir(u"GitHub"_s) && QDir(home.path()).mkdir(u"Code"_s));
        QCOMPARE(Prefs::defaultRepoRoots(home.path()), (QStringList{home.filePath(u"Code"_s), home.filePath(u"GitHub"_s)}));
    }
};

const Registered<PrefsTest> registered;

} // namespace velto

#include "PrefsTest.moc"
