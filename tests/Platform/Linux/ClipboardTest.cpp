#include "OtherProgram.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Linux/X11/QtClipboard.h"
#include "RunTests.h"

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

/// Another program that owns the clipboard, and hands it over when a test says so.
class Holder {
public:
    Holder() = default;
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;
    /// The next holder's window has the same id, so the end of this one has to be seen first.
    ~Holder()
    {
        m_program.close(m_window);
        m_program.atom("any"); // a round trip
        QTest::qWait(50);
    }
    void copy()
    {
        if (m_window == kNoWindow)
            m_window = m_program.open({0, 0, 10, 10}, QByteArray("holder\0Holder\0", 14), false, false);
        xcb_set_selection_owner(m_program.connection(), m_window, m_program.atom("CLIPBOARD"), XCB_CURRENT_TIME);
        m_program.atom("any"); // a round trip: whoever looks from now on finds it
    }
    /// Answers the next request with bytes of a type; refuses it if no type is given. False if none comes.
    bool answer(const QByteArray &type, const QByteArray &bytes)
    {
        return QTest::qWaitFor([&] { return answerOne(type, bytes); });
    }
    /// Hands over the next piece of an INCR transfer, once the previous one was taken.
    bool addPiece(const QByteArray &bytes)
    {
        return QTest::qWaitFor([&] {
            const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_program.connection())};
            if (!event || (event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
                return false;
            const auto &taken = reinterpret_cast<const xcb_property_notify_event_t &>(*event);
            if (taken.window != m_requestor || taken.state != XCB_PROPERTY_DELETE)
                return false;
            xcb_change_property(m_program.connection(), XCB_PROP_MODE_REPLACE, taken.window, taken.atom,
                                m_program.atom("UTF8_STRING"), 8, quint32(bytes.size()), bytes.constData());
            xcb_flush(m_program.connection());
            return true;
        });
    }
    /// Whether every property was written to the window that asked.
    bool unharmed()
    {
        m_program.atom("any"); // a round trip
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_program.connection())}) {
            if (event->response_type == 0)
                return false;
        }
        return true;
    }
    QList<QByteArray> kinds{"TARGETS", "UTF8_STRING"};
    bool wanted = false; ///< it was text that was asked for

    /// Answers a request for targets at once; true if the text itself was requested.
    bool answerOne(const QByteArray &type, const QByteArray &bytes)
    {
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_program.connection())}) {
            if ((event->response_type & 0x7f) != XCB_SELECTION_REQUEST)
                continue;
            const auto &asked = reinterpret_cast<const xcb_selection_request_event_t &>(*event);
            const bool forKinds = asked.target == m_program.atom("TARGETS");
            wanted = asked.target == m_program.atom("UTF8_STRING");
            m_requestor = asked.requestor;
            const quint32 taking = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(m_program.connection(), m_requestor, XCB_CW_EVENT_MASK, &taking);
            if (forKinds) {
                std::vector<quint32> atoms;
                for (const QByteArray &kind : kinds)
                    atoms.push_back(m_program.atom(kind));
                xcb_change_property(m_program.connection(), XCB_PROP_MODE_REPLACE, asked.requestor, asked.property, XCB_ATOM_ATOM,
                                    32, quint32(atoms.size()), atoms.data());
            } else if (!type.isEmpty())
                xcb_change_property(m_program.connection(), XCB_PROP_MODE_REPLACE, asked.requestor, asked.property,
                                    m_program.atom(type), 8, quint32(bytes.size()), bytes.constData());
            xcb_selection_notify_event_t done{};
            done.response_type = XCB_SELECTION_NOTIFY;
            done.requestor = asked.requestor;
            done.selection = asked.selection;
            done.target = asked.target;
            done.property = type.isEmpty() && !forKinds ? xcb_atom_t(XCB_ATOM_NONE) : asked.property;
            xcb_send_event(m_program.connection(), false, asked.requestor, 0, reinterpret_cast<const char *>(&done));
            xcb_flush(m_program.connection());
            if (!forKinds)
                return true;
        }
        return false;
    }

private:
    OtherProgram m_program;
    xcb_window_t m_window = kNoWindow;
    xcb_window_t m_requestor = kNoWindow;
};

} // namespace

/// Other programs' copies are counted, and read without blocking.
class ClipboardTest : public QObject {
    Q_OBJECT
    std::unique_ptr<XcbServer> m_server;
    FakeClock m_clock;
    std::unique_ptr<QtClipboard> m_clipboard;
    std::optional<QString> m_text;
    int m_answers = 0;

    void read(int longest = 100)
    {
        m_clipboard->read(longest, this, [this](const std::optional<QString> &text) {
            m_text = text;
            ++m_answers;
        });
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<XcbServer>();
        m_clipboard = std::make_unique<QtClipboard>(*m_server, m_clock);
        m_answers = 0;
        m_text.reset();
    }
    void cleanup()
    {
        m_clipboard.reset();
        m_server.reset();
    }

    void lookingCostsNoRequest()
    {
        Holder holder;
        const int before = m_clipboard->changeCount();
        holder.copy();
        QTRY_COMPARE(m_clipboard->changeCount(), before + 1);
        holder.copy();
        QTRY_COMPARE(m_clipboard->changeCount(), before + 2);
        const auto sequence = xcb_no_operation(m_server->connection()).sequence;
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(m_clipboard->changeCount(), before + 2);
        QCOMPARE(xcb_no_operation(m_server->connection()).sequence, sequence + 1);
    }

    void takesWhatComes()
    {
        const auto row = [this](const QByteArray &type, const QByteArray &bytes, const std::optional<QString> &text) {
            Holder holder;
            holder.copy();
            m_answers = 0;
            read();
            QVERIFY(holder.answer(type, bytes));
            QVERIFY(holder.wanted);
            QTRY_COMPARE(m_answers, 1);
            QCOMPARE(m_text, text);
            QCOMPARE(m_clock.pendingTimers(), 0);
        };
        row("UTF8_STRING", "h\xc3\xa9 \xff", u"hé \uFFFD"_s);
        row("UTF8_STRING", "", u""_s);
        row("UTF8_STRING", QByteArray(100, 'a'), QString(100, u'a'));
        row("UTF8_STRING", QByteArray(101, 'a'), {}); // too long
        row("UTF8_STRING", QByteArray(100'000, 'a'), {});
        row("STRING", "text", {}); // of another type
        row({}, {}, {}); // refused
    }

    /// If the window disappears before the end, nobody gets the text.
    void takesInWhatComesInPieces()
    {
        for (const int pieces : {1, 3}) {
            Holder holder;
            holder.copy();
            read(100'000);
            QVERIFY(holder.answer("INCR", QByteArray(4, '\1')));
            for (int i = 0; i < pieces; ++i)
                QVERIFY(holder.addPiece(QByteArray(60'000, 'a')));
            QVERIFY(holder.addPiece({}));
            QTRY_COMPARE(m_answers, pieces == 1 ? 1 : 2);
            QCOMPARE(m_text, pieces == 1 ? std::optional(QString(60'000, u'a')) : std::nullopt);
            QVERIFY(holder.unharmed());
        }
    }

    void asksForNothingThatCantBeALink()
    {
        for (const QList<QByteArray> &kinds :
             {QList<QByteArray>{"TARGETS", "image/png"}, {"UTF8_STRING", "x-kde-passwordManagerHint"}}) {
            Holder holder;
            holder.kinds = kinds;
            holder.copy();
            read();
            QVERIFY(QTest::qWaitFor([&] { return holder.answerOne("UTF8_STRING", "secret") || m_answers == 1; }));
            QVERIFY(!holder.wanted && !m_text);
            m_answers = 0;
        }
    }

    void programThatHangs()
    {
        Holder holder;
        holder.copy();
        read();
        m_clock.advance(std::chrono::seconds(4));
        QCOMPARE(m_answers, 0);
        m_clock.advance(std::chrono::seconds(1));
        QCOMPARE(m_answers, 1);
        QVERIFY(!m_text);
        QVERIFY(holder.answer("UTF8_STRING", "late"));
        QTRY_COMPARE(m_text, std::optional(u"late"_s));
        QCOMPARE(m_answers, 2);
        QVERIFY(holder.unharmed());
        {
            Holder dying;
            dying.copy();
            read();
        }
        QTRY_COMPARE(m_answers, 3);
        QVERIFY(!m_text);
    }

    void readingsThatNobodyWaitsFor()
    {
        Holder holder;
        holder.copy();
        auto reader = std::make_unique<QObject>();
        m_clipboard->read(100, reader.get(), [this](const auto &) { ++m_answers; });
        reader.reset();
        read();
        read();
        QCOMPARE(m_answers, 1); // the newer one ends the older
        QVERIFY(!m_text);
        QVERIFY(holder.answer("UTF8_STRING", "asked again")); // the first isn't asked for its text any more
        QTRY_COMPARE(m_answers, 2);
        QCOMPARE(m_text, std::optional(u"asked again"_s));
    }

    void ownCopyIsAtHand()
    {
        m_clipboard->setText(u"mine"_s);
        read();
        QCOMPARE(m_text, std::optional(u"mine"_s));
        read(3);
        QCOMPARE(m_answers, 2);
        QVERIFY(!m_text);
    }
};

static const Registered<ClipboardTest> kAdded;
#include "ClipboardTest.moc"
