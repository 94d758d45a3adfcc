#pragma once

#include "FakeHttp.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Places.h"
#include "Tabs/Home/WorkSource.h"

#include "Core/Prefs.h"

#include <QTest>

namespace velto {

/// When each group is asked, and what the user reads of what came of it.
class WorkSourceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksOnceInFiveMinutesUnlessForced();
    void withoutToolsOrTokensSaysHowToGetThem();
    void whatGhPrintsBecomesALine_data();
    void whatGhPrintsBecomesALine();
    void theRealGhSaysItIsNotSignedIn();
    void aToolThatFailsLosesItsItemsOnly();
    void jiraWithoutASiteAsksForOne();
    void aModuleThatIsOffIsNotAsked();
    void onlyChangesAreAnnounced();
    void aSourceThatGoesWhileAskedLeavesNothingBehind();

private:
    /// What a source leans on, and the source itself.
    struct Desk {
        FakeClock clock;
        FakeBackground background;
        FakeToolRunner tools;
        FakeHttp http;
        FakeKeychain keychain;
        FakeDefaults defaults;
        Places places{QStringLiteral("/home/me"), {}, {}, QStringLiteral("/tmp")};
        Prefs prefs{defaults, places, clock};
        std::unique_ptr<WorkSource> source =
            std::make_unique<WorkSource>(WorkSource::Needs{clock, background, tools, http, keychain, prefs});

        Desk();
        void refresh(bool force = true);
        /// The answers of services that work, each with one item; a tool's status can be given.
        void answer(int linear = 200, int jira = 200, int slack = 200);
    };
};

} // namespace velto
