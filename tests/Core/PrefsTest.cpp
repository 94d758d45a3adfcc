#include "Core/Prefs.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Places.h"
#include "RunTests.h"

#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace velto {

/// What the user has chosen, over a restart and over a damaged store.
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

    void everyChoiceSurvivesARestart()
    {
        FakeDefaults defaults;
        const QDateTime start = m_clock.wallTime().addDays(2);
        {
            Prefs prefs(defaults, m_places, m_clock);
            const QSignalSpy changed(&prefs, &Prefs::changed);
            prefs.setOpenMode(Prefs::OpenMode::Click);
            prefs.setRepoRoots({});
            prefs.setQuillboxURL(u"https://hub.example"_s);
            prefs.setJiraSite(u"site"_s);
            prefs.setJiraEmail(u"me@example.com"_s);
            prefs.setDailyBudget(5'000'000'000);
            prefs.setQuietWhileRecording(false);
            prefs.setPeekOnFinish(false);
            prefs.setOnboarded(true);
            prefs.setMeetingTitle(u"Stand-up"_s);
            prefs.setMeetingURL(u"https://meet.example"_s);
            prefs.setMeetingStart(start);
            prefs.setCalendarSource(Prefs::CalendarSource::Google);
            prefs.setGoogleCalendarIDs({u"b"_s, u"a"_s});
            prefs.setDailyPriority(u"Ship"_s);
            prefs.setDismissedAgentIDs({u"x"_s, u"y"_s});
            prefs.setGlanceGuideDismissed(true);
            QCOMPARE(changed.count(), 17);
        }
        const Prefs prefs(defaults, m_places, m_clock);
        QCOMPARE(prefs.openMode(), Prefs::OpenMode::Click);
        QCOMPARE(prefs.repoRoots(), QStringList());
        QCOMPARE(prefs.quillboxURL(), u"https://hub.example"_s);
        QCOMPARE(prefs.jiraSite(), u"site"_s);
        QCOMPARE(prefs.jiraEmail(), u"me@example.com"_s);
        QCOMPARE(prefs.dailyBudget(), 5'000'000'000);
        QVERIFY(!prefs.quietWhileRecording());
        QVERIFY(!prefs.peekOnFinish());
        QVERIFY(prefs.onboarded());
        QCOMPARE(prefs.meetingTitle(), u"Stand-up"_s);
        QCOMPARE(prefs.meetingURL(), u"https://meet.example"_s);
        QCOMPARE(prefs.meetingStart(), start);
        QCOMPARE(prefs.calendarSource(), Prefs::CalendarSource::Google);
        QCOMPARE(prefs.googleCalendarIDs(), (QStringList{u"b"_s, u"a"_s}));
        QCOMPARE(prefs.dailyPriority(), u"Ship"_s);
        QCOMPARE(prefs.dismissedAgentIDs(), (QSet<QString>{u"x"_s, u"y"_s}));
        QVERIFY(prefs.glanceGuideDismissed());
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
        prefs.set(Prefs::Module::Agents, true); // was on already
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
