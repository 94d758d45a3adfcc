#include "ViewWindow.h"

#include "Core/SourceState.h"
#include "Design/LiveDot.h"
#include "Design/Theme.h"

#include <QAbstractEventDispatcher>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Presses, and releases after so many milliseconds of event time.
void pressFor(QQuickWindow *window, QPointF at, int held)
{
    static quint64 time = 1000;
    time += 1000;
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const bool down = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, at, window->mapToGlobal(at), Qt::LeftButton, down ? Qt::LeftButton : Qt::NoButton, {});
        event.setTimestamp(down ? time : time += quint64(held));
        QCoreApplication::sendEvent(window, &event);
    }
}

} // namespace

/// How a primitive reacts to pointer, keys and screen reader. The gallery shows that each loads in each of its states.
class PrimitivesTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    void controlsSpeakAndObeyKeys_data()
    {
        columns<QString, QString>({"qml", "name"});

        QTest::newRow("icon button") << u"IconButton { symbol: 'pin'; label: 'Pin open' }"_s << u"Pin open"_s;
        QTest::newRow("tab") << u"TabButton { title: 'Home'; symbol: 'house'; badge: 12 }"_s << u"Home, 12"_s;
        QTest::newRow("pill button") << u"PillButton { text: 'Undo' }"_s << u"Undo"_s;
        QTest::newRow("pill") << u"Pill { text: 'Allow'; label: 'Allow: rm'; tone: 'red' }"_s << u"Allow: rm"_s;
        QTest::newRow("chip button") << u"ChipButton { text: '3 waiting' }"_s << u"3 waiting"_s;
    }

    void controlsSpeakAndObeyKeys()
    {
        QFETCH(const QString, qml);
        QFETCH(const QString, name);
        QQuickItem *item = show(qml);
        QVERIFY(item);
        QCOMPARE(nameOf(item), name);
        const QAccessible::Role role = QAccessible::queryAccessibleInterface(item)->role();
        QVERIFY(role == QAccessible::Button || role == QAccessible::PageTab);

        QSignalSpy clicked(item, SIGNAL(clicked()));
        const QImage plain = m_view->grabWindow();
        press(Qt::Key_Tab);
        QVERIFY(item->hasActiveFocus());
        QVERIFY2(m_view->grabWindow() != plain, "the focus can't be seen");
        press(Qt::Key_Space);
        press(Qt::Key_Return);
        press(Qt::Key_Enter);
        QCOMPARE(clicked.count(), 3);
        press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(clicked.count(), 3);
        pressFor(m_view.get(), item->mapToScene({item->width() / 2, item->height() / 2}), 5000); // a slow press counts
        QCOMPARE(clicked.count(), 4);
        QAccessible::queryAccessibleInterface(item)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 5);
        item->setEnabled(false);
        pressFor(m_view.get(), item->mapToScene({item->width() / 2, item->height() / 2}), 50);
        press(Qt::Key_Tab);
        press(Qt::Key_Return);
        QVERIFY(!item->hasActiveFocus());
        QCOMPARE(clicked.count(), 5);
    }

    void aPressOnAPillIsNotOneOnItsRow()
    {
        QQuickItem *row = show(u"ButtonBase { label: 'row'; width: 200; height: 36\n"
                               "Pill { objectName: 'pill'; x: 150; y: 8; text: 'Allow'; tone: Theme.amber } }"_s);
        auto *pill = row->findChild<QQuickItem *>(u"pill"_s);
        QSignalSpy rowClicked(row, SIGNAL(clicked()));
        QSignalSpy pillClicked(pill, SIGNAL(clicked()));
        pressFor(m_view.get(), {160, 18}, 50);
        QCOMPARE(pillClicked.count(), 1);
        QCOMPARE(rowClicked.count(), 0);
        pressFor(m_view.get(), {60, 18}, 50);
        QCOMPARE(rowClicked.count(), 1);
        pill->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Return);
        QCOMPARE(pillClicked.count(), 2);
        QCOMPARE(rowClicked.count(), 1);
    }

    void helpAppearsInsideTheWindow()
    {
        // In a corner, where it fits neither below nor centred.
        QQuickItem *item = show(u"IconButton { x: 370; y: 274; symbol: 'gearshape'; label: 'Settings of everything' }"_s);
        QCOMPARE(m_view->contentItem()->childItems().size(), 1);
        QTest::mouseMove(m_view.get(), {385, 287});
        QTRY_COMPARE(m_view->contentItem()->childItems().size(), 2);
        QQuickItem *tip = m_view->contentItem()->childItems().last();
        QVERIFY(QRectF(0, 0, 400, 300).contains(tip->boundingRect().translated(tip->position())));
        QVERIFY(tip->y() + tip->height() <= item->y());
        QTest::mouseMove(m_view.get(), {10, 10});
        QTRY_COMPARE(m_view->contentItem()->childItems().size(), 1);
    }

    void bannerSaysTheState_data()
    {
        columns<SourceState, bool, QString, QString, QString>({"state", "retryable", "says", "button", "looks"});

        QTest::newRow("ready") << SourceState::ready() << true << QString() << QString() << QString();
        QTest::newRow("loading") << SourceState::loading() << true << u"Loading…"_s << QString() << u"Loading…"_s;
        QTest::newRow("unavailable") << SourceState::unavailable(u"No Claude Code."_s, u"Install it."_s) << false
                                     << u"No Claude Code. Install it."_s << u"Settings…"_s
                                     << u"ice:(info.circle) | No Claude Code./Settings…/Install it."_s;
        QTest::newRow("failed") << SourceState::failed(u"It <b>broke</b>."_s) << true << u"It <b>broke</b>."_s << u"Try again"_s
                                << u"amber:(exclamationmark.triangle) | It <b>broke</b>. | Try again"_s;
        QTest::newRow("failed for good") << SourceState::failed(u"It broke."_s) << false << u"It broke."_s << QString()
                                         << u"amber:(exclamationmark.triangle) | It broke."_s;
    }

    void bannerSaysTheState()
    {
        QFETCH(const SourceState, state);
        QFETCH(const bool, retryable);
        QFETCH(const QString, says);
        QFETCH(const QString, button);
        QQuickItem *banner =
            show(u"StateBanner { width: 400 }"_s, {{u"feed"_s, QVariant::fromValue(state)}, {u"retryable"_s, retryable}});
        QVERIFY(banner);
        QCOMPARE(banner->isVisible(), !says.isEmpty());
        QCOMPARE(banner->implicitHeight() > 0, !says.isEmpty());
        QCOMPARE(nameOf(banner), says);
        QTEST(seen(banner).join(u'/'), "looks");

        QSignalSpy settings(banner, SIGNAL(settingsWanted()));
        QSignalSpy retry(banner, SIGNAL(retryWanted()));
        press(Qt::Key_Tab);
        QCOMPARE(focused(), button);
        press(Qt::Key_Return);
        QCOMPARE(settings.count(), button == u"Settings…" ? 1 : 0);
        QCOMPARE(retry.count(), button == u"Try again" ? 1 : 0);
    }

    void aNoticeHasAButtonIfThereIsSomethingToDo()
    {
        const QString bar = u"NoticeBar { width: 400; symbol: 'checkmark.circle'; text: 'It <b>went</b>.'; action: '%1' }"_s;
        QCOMPARE(seen(show(bar.arg(QString()))).join(u'/'), u"ice:(checkmark.circle) | It <b>went</b>."_s);
        QQuickItem *notice = show(bar.arg(u"Undo"_s));
        QCOMPARE(QAccessible::queryAccessibleInterface(notice)->role(), QAccessible::Notification);
        const QSignalSpy clicked(notice, SIGNAL(clicked()));
        QTRY_COMPARE(seen(notice).join(u'/'), u"ice:(checkmark.circle) | It <b>went</b>. | Undo"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Undo"_s);
        press(Qt::Key_Return);
        QCOMPARE(clicked.count(), 1);
    }

    void dotMovesOnlyWhileSomeoneCanSeeIt()
    {
        auto *dot = qobject_cast<LiveDot *>(show(u"LiveDot { live: true }"_s));
        QVERIFY(dot);
        Theme *theme = Theme::of(m_view->engine());
        QVERIFY(moves());
        theme->setReducedMotion(true);
        QVERIFY(!moves());
        theme->setReducedMotion(false);
        QVERIFY(moves());
        dot->setVisible(false);
        QVERIFY(!moves());
        dot->setVisible(true);
        m_view->hide();
        QVERIFY(!moves());
        m_view->show();
        const QColor full = m_view->grabWindow().pixelColor(3, 3);
        QVERIFY(moves());
        QTRY_VERIFY(m_view->grabWindow().pixelColor(3, 3).blue() < full.blue() / 2);
        dot->setLive(false);
        QVERIFY(!moves());
        QCOMPARE(m_view->grabWindow().pixelColor(3, 3), full);
    }

private:
    /// What doesn't move draws nothing.
    bool moves()
    {
        QTest::qWait(50); // the frames of the last change
        const QSignalSpy frames(m_view.get(), &QQuickWindow::frameSwapped);
        return QTest::qWaitFor([&frames] { return !frames.isEmpty(); }, 120);
    }
    QQuickItem *show(const QString &qml, const QVariantMap &properties = {}) { return showQml(qml, {400, 300}, properties); }
};

const Registered<PrimitivesTest> registered;

} // namespace velto

#include "PrimitivesTest.moc"
