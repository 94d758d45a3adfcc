#pragma once

#include "Core/Peek.h"
#include "Core/Prefs.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Fake/InlineBackground.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"

namespace velto {

/// What nearly every store needs: time, work in the background, tools and the user's settings. A test adds its store.
struct StoreDesk {
    explicit StoreDesk(const QDateTime &now = QDateTime(QDate(2026, 11, 21), QTime(9, 0)));
    ~StoreDesk();

    FakeClock clock;
    FakeBackground background;
    InlineBackground lane;
    FileWriter writer{lane, clock};
    FakeToolRunner tools;
    FakeDefaults defaults;
    FakeKeychain keychain;
    FakeWorkspace workspace;
    Places places{QStringLiteral("/home/me"), {}, {}, QStringLiteral("/tmp")};
    Prefs prefs{defaults, places, clock};
    QList<Peek> peeks;

    QStringList texts() const;
};

} // namespace velto
