#include "RunTests.h"

#include "Hooks/Hooks.h"
#include "Platform/Fake/FakePlatform.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using velto::FakeDefaults;
using velto::hookToken;

/// The secret of the hook commands.
class TokenTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void isMadeOnceAndKept()
    {
        FakeDefaults defaults;
        const auto token = hookToken(defaults);
        QVERIFY(QRegularExpression(u"\\A[0-9a-f]{48}\\z"_s).match(token).hasMatch());
        QCOMPARE(defaults.values.value(u"hookToken"_s), QVariant(token));
        QCOMPARE(hookToken(defaults), token);
        FakeDefaults others;
        QVERIFY(hookToken(others) != token);
    }

    void keepsAStoredOneOf32Characters()
    {
        FakeDefaults defaults;
        const auto longEnough = u"Any text of 32 characters, kept."_s;
        QCOMPARE(longEnough.size(), 32);
        defaults.values[u"hookToken"_s] = longEnough;
        QCOMPARE(hookToken(defaults), longEnough);
        for (const QVariant &stored :
             {QVariant(longEnough.chopped(1)), QVariant(QStringList{longEnough, longEnough}), QVariant()}) {
            defaults.values[u"hookToken"_s] = stored;
            QCOMPARE(hookToken(defaults).size(), 48);
        }
    }
};

static const Registered<TokenTest> registered;

#include "TokenTest.moc"
