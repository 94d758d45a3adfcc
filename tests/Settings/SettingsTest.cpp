#include "Settings/Desk.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct Watched : Desk {
    /// How often everything was read again, by force, during `change`.
    int refreshes(const std::function<void()> &change)
    {
        const QSignalSpy updated(&hub, &Hub::updatedChanged);
        change();
        background.finishAll();
        return int(updated.count());
    }
    QVariant cell(QAbstractItemModel *model, const QString &id, int column)
    {
        for (const RowModel::Row &row : static_cast<RowModel *>(model)->rows()) {
            if (row.first() == id)
                return row.at(column);
        }
        return {};
    }
};

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void whatIsChosenIsStoredAtOnceAndShown()
    {
        Watched desk;
        GeneralSettings &general = *desk.settings.general();
        QCOMPARE(desk.refreshes([&] { general.setMode(int(Prefs::Mode::Sales)); }), 1);
        QCOMPARE(general.modeLine(), u"Outreach, meetings, CRM and follow-ups"_s);
        QCOMPARE(desk.defaults.value(u"mode"_s).toString(), u"sales"_s);
        general.setDailyPriority(u"ship it"_s);
        QCOMPARE(general.dailyPriority(), u"ship it"_s);

        // A change from elsewhere shows too.
        const QSignalSpy changed(&general, &GeneralSettings::changed);
        desk.prefs.set(Prefs::Module::Media, false);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(general.modeLine(), u"Your own mix"_s);
    }

    void aBudgetIsAWholeNumber()
    {
        Watched desk;
        for (const auto &[typed, stored] : {std::pair(u"1500000"_s, 1500000),
                                            {u" 12 "_s, 12},
                                            {QString(), 0},
                                            {u"many"_s, 7},
                                            {u"-3"_s, 7},
                                            {u"99999999999999999999"_s, 7}}) {
            desk.prefs.setDailyBudget(7);
            desk.settings.general()->setDailyBudget(typed);
            QCOMPARE(desk.prefs.dailyBudget(), stored);
        }
    }

    void modulesAndFolders()
    {
        Watched desk;
        ModuleSettings &modules = *desk.settings.modules();
        desk.prefs.selectMode(Prefs::Mode::All);
        QCOMPARE(desk.refreshes([&] { modules.set(u"media"_s, false); }), 1);
        QCOMPARE(desk.cell(modules.modules(), u"media"_s, 3), QVariant(false));
        QCOMPARE(desk.refreshes([&] { modules.set(u"media"_s, false); }), 0);

        desk.folderPanel.answer = QStringList{u"/code/a/"_s, u"/code/b"_s, u"/code/a"_s};
        modules.chooseFolders();
        QCOMPARE(desk.folderPanel.promptNow, u"Watch"_s);
        QCOMPARE(desk.prefs.repoRoots().mid(desk.prefs.repoRoots().size() - 2), QStringList({u"/code/a"_s, u"/code/b"_s}));
        QCOMPARE(desk.refreshes([&] { modules.removeFolder(u"/code/a"_s); }), 1);
        QVERIFY(!desk.prefs.repoRoots().contains(u"/code/a"_s));
        modules.set(u"repos"_s, false);
        QVERIFY(!modules.foldersShown());
    }

    void tokensAreTrimmedStoredAndNeverShown()
    {
        Watched desk;
        TokenSettings &tokens = *desk.settings.tokens();
        tokens.save(u"Velto.linear"_s, u"   "_s);
        QVERIFY(!tokens.isSaved(u"Velto.linear"_s));
        QCOMPARE(desk.refreshes([&] { tokens.save(u"Velto.linear"_s, u" secret\n"_s); }), 1);
        QVERIFY(tokens.isSaved(u"Velto.linear"_s));
        QCOMPARE(desk.keychain.get(u"Velto.linear"_s), std::optional(u"secret"_s));
        QCOMPARE(desk.refreshes([&] { tokens.remove(u"Velto.linear"_s); }), 1);
        QVERIFY(!tokens.isSaved(u"Velto.linear"_s));
        QVERIFY(!desk.keychain.get(u"Velto.linear"_s));

        tokens.setJiraSite(u"acme.atlassian.net"_s);
        QCOMPARE(desk.refreshes([&] { tokens.readAnew(); }), 1);
        QCOMPARE(desk.refreshes([&] { tokens.readAnew(); }), 0);
    }

    void aHubIsKeptOnceItTookTheToken()
    {
        Watched desk;
        QuillboxSettings &hub = *desk.settings.quillbox();
        for (const QString &noAddress : {QString(), u"hub.local"_s, u"https://a b"_s}) {
            hub.setUrl(noAddress);
            QVERIFY2(!hub.canTest(), qPrintable(noAddress));
        }
        hub.setUrl(u" https://hub.example.net/base "_s);
        hub.setToken(u" qb_1 "_s);
        QVERIFY(hub.canTest());
        QVERIFY(!hub.canDisconnect());

        // Refused: an error message, and nothing is stored.
        desk.http.answer = [](const HttpRequest &) { return HttpReply{401, {}, {}}; };
        hub.test();
        QVERIFY(hub.result().contains(u"hub.example.net didn't accept the token"_s));
        QVERIFY(!hub.succeeded());
        QVERIFY(!hub.testing());
        QVERIFY(!desk.keychain.get(u"Velto.quillbox"_s));
        QCOMPARE(desk.prefs.quillboxURL(), QString());

        desk.http.answer = [](const HttpRequest &) { return HttpReply{200, "{}", {}}; };
        hub.test();
        desk.background.finishAll();
        QCOMPARE(desk.http.requests.last().url, QUrl(u"https://hub.example.net/base/api/velto"_s));
        QCOMPARE(hub.result(), u"Connected. Your todos will appear in Velto."_s);
        QCOMPARE(desk.keychain.get(u"Velto.quillbox"_s), std::optional(u"qb_1"_s));
        QCOMPARE(desk.defaults.value(u"quillboxURL"_s).toString(), u"https://hub.example.net/base"_s);
        QCOMPARE(hub.token(), QString());
        QVERIFY(hub.tokenSaved());
        QCOMPARE(hub.status(), u"Not connected"_s); // the selection wins

        // Only another address, with a selection that allows it.
        desk.quillboxMode = QuillboxMode::hub(QUrl(u"https://other.example.net"_s), u"qb_1"_s);
        hub.setUrl(u"https://other.example.net"_s);
        desk.http.requests.clear();
        hub.test();
        QVERIFY(hub.testing());
        QVERIFY(!hub.canTest());
        desk.background.finishAll();
        QVERIFY(desk.http.requests.first().headers.contains({"Authorization", "Bearer qb_1"}));
        QCOMPARE(desk.keychain.get(u"Velto.quillbox"_s), std::optional(u"qb_1"_s));
        QCOMPARE(hub.status(), u"Hub · other.example.net"_s);
    }

    void disconnectingAHubForgetsTheTokensOfTheWorkToolsToo()
    {
        Watched desk;
        for (const QString &name : {u"Velto.quillbox"_s, u"Velto.linear"_s, u"Velto.jira"_s, u"Velto.slack"_s})
            desk.keychain.put(name, u"x"_s);
        desk.prefs.setQuillboxURL(u"https://hub.example.net"_s);
        SettingsStore settings(desk.needs);
        QuillboxSettings &hub = *settings.quillbox();
        QCOMPARE(hub.url(), u"https://hub.example.net"_s);
        hub.test(); // and the user changes their mind before the answer
        hub.disconnectHub();
        desk.background.finishAll();
        QVERIFY(desk.keychain.entries.isEmpty());
        QCOMPARE(desk.prefs.quillboxURL(), QString());
        QCOMPARE(hub.url(), QString());
        QCOMPARE(hub.result(), QString());
        QVERIFY(!hub.canDisconnect());
        QVERIFY(!hub.testing());
    }

    void theHooksCanBeConnectedWhereClaudeCodeHasAFolder()
    {
        Watched desk;
        ClaudeSettings &claude = *desk.settings.claude();
        QVERIFY(!claude.canConnect());
        QVERIFY(QDir(desk.folder.path()).mkdir(u".claude"_s));
        QVERIFY(claude.canConnect());
        QCOMPARE(claude.installedText(), u"Yes"_s);
        QCOMPARE(claude.stateText(), u"Not connected"_s);
        claude.connectHooks();
        QVERIFY(claude.connected());
        QCOMPARE(claude.stateText(), u"Connected"_s);
        claude.disconnectHooks();
        QVERIFY(!claude.connected());
        QVERIFY(claude.noteText().contains(u"127.0.0.1:4747,"_s));
    }

    void theResetTakesBackWhatItSaysAndNoMore()
    {
        Watched desk;
        desk.agents.installHooks();
        desk.loginItem.set(true);
        for (const QString &name : {u"Velto.quillbox"_s, u"Velto.linear"_s, u"Velto.googleCalendar.tokens"_s})
            desk.keychain.put(name, u"x"_s);
        desk.prefs.setOnboarded(true);
        const QSignalSpy quit(desk.settings.about(), &AboutSettings::quitWanted);
        AboutSettings &about = *desk.settings.about();
        desk.defaults.stays = u"settings.json can't be written."_s;
        about.reset();
        desk.wait(2000); // for a keyring that hangs
        QCOMPARE(about.left(),
                 (QStringList{u"Quillbox's token: the keyring hasn't answered yet."_s,
                              u"The settings: settings.json can't be written."_s}));
        desk.keychain.keeps = false;
        about.reset();
        desk.background.finishAll();
        QCOMPARE(about.left().value(0), u"Quillbox's token: the keyring couldn't erase it."_s);
        QCOMPARE(quit.count(), 0);
        desk.keychain.keeps = true;
        desk.defaults.stays.clear();
        about.reset();
        desk.background.finishAll();
        QCOMPARE(about.left(), QStringList());
        QCOMPARE(quit.count(), 1);
        QVERIFY(!desk.installer.present());
        QVERIFY(!desk.loginItem.enabled());
        QVERIFY(!desk.keychain.get(u"Velto.quillbox"_s));
        QVERIFY(desk.keychain.get(u"Velto.linear"_s));
        QVERIFY(desk.keychain.get(u"Velto.googleCalendar.tokens"_s));
        QVERIFY(!desk.defaults.value(u"onboarded"_s).isValid());
    }

    void theWelcomeTurnsOffWhatCanNotWorkHere()
    {
        Watched desk;
        desk.tools.installed.clear();
        desk.prefs.setRepoRoots({});
        Welcome welcome(desk.welcome);
        QVERIFY(!welcome.offersHooks());
        welcome.detect();
        desk.background.finishAll();
        QCOMPARE(desk.prefs.mode(), Prefs::Mode::Engineer);
        for (const auto module :
             {Prefs::Module::Agents, Prefs::Module::Usage, Prefs::Module::Mcp, Prefs::Module::Repos, Prefs::Module::Prs})
            QVERIFY2(!desk.prefs.isOn(module), qPrintable(Prefs::label(module)));
        QVERIFY(desk.prefs.isOn(Prefs::Module::Todos));
        QCOMPARE(desk.cell(welcome.modules(), u"prs"_s, 2).toString(), u"needs the GitHub CLI"_s);
        welcome.set(u"prs"_s, true);
        QCOMPARE(desk.prefs.mode(), Prefs::Mode::Custom);
        desk.prefs.setOnboarded(true);
        Welcome(desk.welcome).detect(); // once is enough
        desk.background.finishAll();
        QCOMPARE(desk.prefs.mode(), Prefs::Mode::Custom);
        QVERIFY(desk.prefs.isOn(Prefs::Module::Prs));
    }

    void finishingTheWelcomeDoesWhatWasTicked()
    {
        for (const auto &[login, hooks] : {std::pair(true, true), {true, false}, {false, true}}) {
            Watched desk;
            desk.tools.installed.insert(u"claude"_s);
            Welcome welcome(desk.welcome);
            const QSignalSpy done(&welcome, &Welcome::done);
            welcome.setProperty("login", login);
            welcome.setProperty("hooks", hooks);
            welcome.finish();
            QCOMPARE(desk.loginItem.enabled(), login);
            QCOMPARE(desk.installer.present(), hooks);
            QCOMPARE(done.count(), 1);
        }
    }
};

} // namespace velto

QTEST_GUILESS_MAIN(velto::SettingsTest)
#include "SettingsTest.moc"
