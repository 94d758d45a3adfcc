#include "RunTests.h"
#include "World.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// The refresh schedule, the tabs, the check for recordings, and what a press on a Peek does.
class HubTest : public QObject {
    Q_OBJECT

    static Peek line(const QString &text)
    {
        Peek peek;
        peek.text = text;
        return peek;
    }

private Q_SLOTS:
    void readsAtTheStartAndEvery45Seconds()
    {
        World w;
        const auto listings = [&w] {
            w.background.finishAll();
            return w.tools.ran.count(u"claude agents --json"_s);
        };
        QCOMPARE(listings(), 1);
        const QSignalSpy updated(&w.hub, &Hub::updatedChanged);
        w.wait(44'999);
        QCOMPARE(updated.count(), 0);
        w.wait(1);
        QCOMPARE(updated.count(), 1);
        QCOMPARE(listings(), 2);
        QCOMPARE(w.hub.updated(), w.clock.wallTime());

        w.prefs.set(Prefs::Module::Agents, false);
        w.wait(45'000);
        QCOMPARE(listings(), 2);
    }

    void aModuleThatGoesTakesItsTabAndTheSelectionWithIt()
    {
        World w;
        w.wait(0);
        w.hub.open(Tab::Agents);
        QCOMPARE(w.hub.selected(), Tab::Agents);
        w.prefs.set(Prefs::Module::Agents, false);
        QCOMPARE(w.hub.selected(), Tab::Agents); // until the change is delivered
        w.wait(0);
        QVERIFY(!w.hub.tabs().contains(Tab::Agents));
        QCOMPARE(w.hub.selected(), Tab::Home);
        w.hub.open(Tab::Quillbox);
        QCOMPARE(w.hub.selected(), Tab::Home);
    }

    void aRecorderSilencesEverything()
    {
        World w;
        QStringList answers;
        Peek question = line(u"question"_s);
        question.decide = [&answers](std::optional<bool> answer) { answers.append(answer ? u"?"_s : u"nothing"_s); };
        w.hub.show(question);
        w.hub.show(line(u"waiting"_s));
        w.applications.setRunning({u"org.mozilla.firefox"_s, u"com.obsproject.obs-studio"_s});
        QVERIFY(w.hub.recording());
        QVERIFY(!w.hub.hasPeek());
        QCOMPARE(answers.size(), 1);
        w.hub.show(line(u"dropped"_s));
        QVERIFY(!w.hub.hasPeek());
        w.applications.setRunning({u"org.mozilla.firefox"_s});
        QVERIFY(!w.hub.recording());
        QVERIFY(!w.hub.hasPeek());

        // The switch takes effect when the next application starts or ends.
        w.applications.setRunning({u"com.loom.desktop"_s});
        w.prefs.setQuietWhileRecording(false);
        w.wait(1000);
        QVERIFY(w.hub.recording());
        w.applications.setRunning({u"com.loom.desktop"_s, u"x"_s});
        QVERIFY(!w.hub.recording());
    }

    void aPressOnARowLeadsSomewhereAndEndsTheQueue()
    {
        World w;
        const QSignalSpy panel(&w.hub, &Hub::panelWanted);

        Peek resume = line(u"resume"_s);
        resume.resume = u"aefe0d0b-131d-43a7-b83d-daf04de24178"_s;
        resume.url = QUrl(u"https://example.com"_s);
        w.hub.show(resume);
        w.hub.show(line(u"behind"_s));
        w.hub.act(w.hub.peek().id);
        QCOMPARE(w.terminals.launched.size(), 1);
        QVERIFY(w.workspace.opened.isEmpty());
        QVERIFY(!w.hub.hasPeek());

        Peek join = line(u"join"_s);
        join.url = QUrl(u"https://example.com"_s);
        w.hub.show(join);
        w.hub.act(w.hub.peek().id);
        QCOMPARE(w.workspace.opened, QList<QUrl>{QUrl(u"https://example.com"_s)});
        QCOMPARE(panel.count(), 0);

        Peek tab = line(u"tab"_s);
        tab.tab = Tab::Agents;
        w.hub.show(tab);
        w.hub.act(w.hub.peek().id);
        QCOMPARE(w.hub.selected(), Tab::Agents);
        QCOMPARE(panel.count(), 1);
    }

    void theRowOfAnUnreadQuestionTakesNoPress()
    {
        World w;
        Peek question = line(u"question"_s);
        question.resume = u"aefe0d0b-131d-43a7-b83d-daf04de24178"_s;
        int answered = 0;
        question.decide = [&answered](std::optional<bool>) { ++answered; };
        w.hub.show(question);
        w.hub.act(w.hub.peek().id);
        QCOMPARE(answered, 0);
        QVERIFY(w.terminals.launched.isEmpty());
        w.wait(300);
        w.hub.act(w.hub.peek().id);
        QCOMPARE(answered, 1);
        QCOMPARE(w.terminals.launched.size(), 1);
    }
};

const Registered<HubTest> registered;

} // namespace velto

#include "HubTest.moc"
