#include "RunTests.h"

#include "Design/Plain.h"

using namespace Qt::StringLiterals;

namespace velto {

/// What text from outside looks like when it is shown.
class PlainTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsOneHarmlessLine()
    {
        QCOMPARE(plainLine(u"<b>PR</b> & <img src='x'>"_s), u"<b>PR</b> & <img src='x'>"_s);
        QCOMPARE(plainLine(u"one\ntwo\u2028three\u2029four"_s), u"one two three four"_s);
        QCOMPARE(plainLine(u"a\u0007b\tc\u001B[31md\u007F"_s), u"a b c [31md "_s);
        QCOMPARE(plainLine(u"إصلاح"_s), u"إصلاح"_s); // right-to-left names stay, overrides of the direction go
        QCOMPARE(plainLine(u"\u202Eyned\u202C \u2066x\u2069"_s), u"yned x"_s);
        QCOMPARE(plainLine(u"👩\u200D💻"_s), u"👩\u200D💻"_s); // joined emoji stay
    }

    void keepsTheLinesOfALongText() { QCOMPARE(plainLines(u"one\r\ntwo\n\u0007three"_s), u"one\ntwo\n three"_s); }

    void cutsWhatNobodyCanRead()
    {
        QCOMPARE(plainLine(QString(10000, u'x')).size(), 1000);
        // Not in the middle of a character.
        const QString cut = plainLine(QString(999, u'x') + u"👩"_s);
        QCOMPARE(cut, QString(999, u'x'));
    }
};

const Registered<PlainTest> registered;

} // namespace velto

#include "PlainTest.moc"
