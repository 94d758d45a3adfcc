#include "ViewPage.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// JSON with ' instead of ".
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

QByteArray snapshot(const QByteArray &sessions = {}, const QByteArray &rest = {})
{
    return json("{'todos': [], 'heard': [{'id': 1, 'name': 'Tolver: buy milk', 'at': ''}], 'written_today': {'note': 2}, "
                "'handoffs': [")
        + sessions + "]" + rest + "}";
}

QByteArray session(int id)
{
    return json("{'id': %1, 'name': 'session %1', 'at': ''}").replace("%1", QByteArray::number(id));
}

QByteArray card(const char *answer)
{
    return json(", 'gap': {'id': 1, 'area': 'Rivers', 'question': 'Why?', 'grip': ") + answer + "}";
}

} // namespace

/// The Quillbox tab with its real store.
class QuillboxViewTest : public ViewPage {
    Q_OBJECT

private Q_SLOTS:
    void everyStateDrawsWithoutAWarning()
    {
        const auto row = [this](const HttpReply &reply, const QStringList &shown) {
            begin();
            m_world->connectHub({});
            m_world->http.answer = [reply](const HttpRequest &) { return reply; };
            if (!reply.status)
                m_world->quillboxMode = QuillboxMode::local(u"/home/me/quillbox"_s);
            m_world->quillbox.reconnect();
            m_world->background.finishAll();
            show(m_world->quillbox, 400);
            QCOMPARE(words(), shown);
            if (QQuickItem *again = button(u"Try again"_s)) {
                const qsizetype asked = m_world->http.requests.size();
                again->forceActiveFocus();
                press(Qt::Key_Return);
                QCOMPARE(m_world->http.requests.size(), asked + 1);
            }
        };
        const QString hub = u"Hub · hub.example.net"_s;
        const QString nothing = u"Nothing new in Quillbox right now."_s;
        row({200, snapshot({}, card("null")), {}},
            {hub, u"Saved today: note 2"_s, u"Today's learning card"_s, u"Rivers"_s, u"Why?"_s,
             u"Heard by Tolver · last 24 hours"_s, u"buy milk"_s});
        row({200, json("{'todos': [], 'heard': [], 'handoffs': [], 'written_today': {}}"), {}}, {hub, nothing});
        row({503, {}, {}},
            {hub, u"Quillbox at hub.example.net had a problem (503). Velto will try again in a minute."_s, u"Try again"_s,
             nothing});
        row({},
            {u"Todos come straight from the Quillbox database on this Mac. The learning card, live sessions and Tolver need a "
             "Quillbox hub (Settings → Quillbox)."_s});
    }

    void theCardAndTheRowsReadAsTheyAre()
    {
        m_world->connectHub(snapshot(session(1), card("\"Because.\"")));
        show(m_world->quillbox, 400);
        QCOMPARE(seen(),
                 QStringList({u"(checkmark.circle) | Hub · hub.example.net"_s, u"Saved today: note 2"_s,
                              u"ice:(graduationcap) | Today's learning card"_s, u"Rivers"_s, u"Why?"_s, u"Show the answer"_s,
                              u"Live sessions · last 6 hours"_s, u"cyan:(laptopcomputer.and.arrow.down) | session 1"_s,
                              u"Heard by Tolver · last 24 hours"_s, u"orange:(ear) | buy milk"_s}));
    }

    void theAnswerTakesTheKeyboardAlong()
    {
        m_world->connectHub(snapshot({}, card("\"Because.\"")));
        show(m_world->quillbox, 400);
        QVERIFY(button(u"Show the answer"_s));
        button(u"Show the answer"_s)->forceActiveFocus();
        press(Qt::Key_Space);
        QTRY_COMPARE(focused(), u"Because."_s);
        QTRY_VERIFY(words().contains(u"Because."_s));
        QVERIFY(!button(u"Show the answer"_s));
    }

    void theArrowsGoThroughTheRows()
    {
        QByteArrayList sessions;
        for (int i = 0; i < 2000; ++i)
            sessions.append(session(i));
        m_world->connectHub(snapshot(sessions.join(',')));
        show(m_world->quillbox, 400);
        QVERIFY(items().size() < 1000); // only rows in sight are created
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Other Mac: session 0"_s);
        for (int i = 0; i < 40; ++i)
            press(Qt::Key_Down);
        QCOMPARE(focused(), u"Other Mac: session 40"_s);
        m_view->grabWindow();
        const double y = m_view->activeFocusItem()->mapToScene({0, 0}).y();
        QVERIFY(y >= 0 && y + m_view->activeFocusItem()->height() <= 400);
        press(Qt::Key_Up);
        QCOMPARE(focused(), u"Other Mac: session 39"_s);
    }

    void aRowKeepsTheKeyboardOverASnapshot()
    {
        m_world->connectHub(snapshot(session(1) + "," + session(2)));
        show(m_world->quillbox, 400);
        button(u"Other Mac: session 2"_s)->forceActiveFocus();
        m_world->http.answer = [](const HttpRequest &) {
            return HttpReply{200, snapshot(session(5) + "," + session(2) + "," + session(6)), {}};
        };
        m_world->quillbox.fetchAgain();
        m_world->background.finishAll();
        m_view->grabWindow();
        QCOMPARE(focused(), u"Other Mac: session 2"_s);
        press(Qt::Key_Down);
        QCOMPARE(focused(), u"Other Mac: session 6"_s);
    }

private:
    /// What a screen reader finds, from top to bottom.
    QStringList words() const
    {
        QList<std::pair<double, QString>> found;
        for (QQuickItem *item : items()) {
            if (const QString name = nameOf(item); !name.isEmpty() && item->height() > 0)
                found.emplaceBack(item->mapToScene({0, 0}).y(), name);
        }
        std::ranges::stable_sort(found, {}, &std::pair<double, QString>::first);
        QStringList result;
        for (const auto &[y, name] : std::as_const(found))
            result.append(name);
        result.removeAll(u"Quillbox"_s);
        return result;
    }
};

const Registered<QuillboxViewTest> registered;

} // namespace velto

#include "QuillboxViewTest.moc"
