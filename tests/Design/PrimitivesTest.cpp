#include "ViewWindow.h"

#include "Core/SourceState.h"
#include "Design/LiveDot.h"
#include "Design/Theme.h"

#include <QAbstractEventDispatcher>
#include <QEasingCurve>
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

const QString kMenu = u"Item { id: root; width: 400; height: 300\n"
                      "property int chosen: -1\n"
                      "property alias open: menu.active\n"
                      "PillButton { id: other; text: 'other'; y: 200 }\n"
                      "PillButton { id: button; text: 'button'; onClicked: menu.active = true }\n"
                      "Loader { id: menu; active: false\n"
                      "  sourceComponent: PopupMenu { target: button; entries: ['one', 'two', 'three']\n"
                      "    onChosen: index => root.chosen = index; onClosed: menu.active = false } }\n}"_s;

} // namespace

/// What a primitive does with pointer, keys and screen reader, where Tab goes, and what stands over everything else: menus. That
/// each loads in each of its states is the gallery's to show.
class PrimitivesTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    void controlsSpeakAndObeyKeys()
    {
        for (const auto &[qml, name] : {std::pair(u"IconButton { symbol: 'pin'; label: 'Pin open' }"_s, u"Pin open"_s),
                                        {u"TabButton { title: 'Home'; symbol: 'house'; badge: 12 }"_s, u"Home, 12"_s},
                                        {u"PillButton { text: 'Undo' }"_s, u"Undo"_s},
                                        {u"Pill { text: 'Allow'; label: 'Allow: rm'; tone: 'red' }"_s, u"Allow: rm"_s},
                                        {u"ChipButton { text: '3 waiting' }"_s, u"3 waiting"_s}}) {
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
            pressFor(m_view.get(), item->mapToScene({item->width() / 2, item->height() / 2}), 5000); // a slow one counts
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

    void lettersGrowAndStandOutAsTheUserWants()
    {
        QQuickItem *text = show(u"PlainText { words: 'Velto'; size: 20; color: Theme.glassTertiary }"_s);
        Theme *theme = Theme::of(m_view->engine());
        const double height = text->implicitHeight();
        theme->setTextScale(2);
        QVERIFY(text->implicitHeight() > 1.9 * height);
        QVERIFY(text->property("color").value<QColor>().alpha() < 255);
        theme->setHighContrast(true);
        QCOMPARE(text->property("color").value<QColor>(), QColor(Qt::white));
    }

    void aCommandLosesItsMarksAndMarkupIsText()
    {
        show(u"CodeText { width: 380; words: 'Run `a <b>` & `c`, not <i>d</i>' }"_s);
        QCOMPARE(seen(), QStringList{u"Run a <b> & c, not <i>d</i>"_s});
    }

    void whatMovesFollowsTheSpring()
    {
        const auto *spring = show(u"Item { property Spring move: Spring {} }"_s)->property("move").value<QObject *>();
        QCOMPARE(spring->property("duration").toInt(), Theme::kSpringDuration);
        const auto easing = spring->property("easing").value<QEasingCurve>();
        for (const double progress : {0.1, 0.3, 0.7})
            QCOMPARE(easing.valueForProgress(progress), Theme::spring().valueForProgress(progress));
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

    void bannerSaysTheState()
    {
        const auto row = [this](const SourceState &state, bool retryable, const QString &says, const QString &button,
                                const QString &looks) {
            QQuickItem *banner =
                show(u"StateBanner { width: 400 }"_s, {{u"feed"_s, QVariant::fromValue(state)}, {u"retryable"_s, retryable}});
            QVERIFY(banner);
            QCOMPARE(banner->isVisible(), !says.isEmpty());
            QCOMPARE(banner->implicitHeight() > 0, !says.isEmpty());
            QCOMPARE(nameOf(banner), says);
            QCOMPARE(seen(banner).join(u'/'), looks);

            QSignalSpy settings(banner, SIGNAL(settingsWanted()));
            QSignalSpy retry(banner, SIGNAL(retryWanted()));
            press(Qt::Key_Tab);
            QCOMPARE(focused(), button);
            press(Qt::Key_Return);
            QCOMPARE(settings.count(), button == u"Settings…" ? 1 : 0);
            QCOMPARE(retry.count(), button == u"Try again" ? 1 : 0);
        };
        row(SourceState::ready(), true, {}, {}, {});
        row(SourceState::loading(), true, u"Loading…"_s, {}, u"Loading…"_s);
        row(SourceState::unavailable(u"No Claude Code."_s, u"Install it."_s), false, u"No Claude Code. Install it."_s,
            u"Settings…"_s, u"ice:(info.circle) | No Claude Code./Settings…/Install it."_s);
        row(SourceState::failed(u"It <b>broke</b>."_s), true, u"It <b>broke</b>."_s, u"Try again"_s,
            u"amber:(exclamationmark.triangle) | It <b>broke</b>. | Try again"_s);
        row(SourceState::failed(u"It broke."_s), false, u"It broke."_s, {}, u"amber:(exclamationmark.triangle) | It broke."_s);
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

    void tabPassesAScrolledListAsOne()
    {
        show(u"Item { width: 400; height: 300\n"
             "PillButton { text: 'above' }\n"
             "ListView { y: 50; width: 400; height: 200; cacheBuffer: 200; model: 100; contentY: 1000; clip: true\n"
             "  delegate: PillButton { required property int index; text: 'row ' + index } }\n"
             "PillButton { text: 'below'; y: 270 }\n}"_s);
        QTest::qWait(50); // the rows beyond the edges come later
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"above"_s);
        press(Qt::Key_Tab);
        QVERIFY2(focused().startsWith(u"row"), qPrintable(focused()));
        press(Qt::Key_Backtab);
        press(Qt::Key_Backtab);
        QCOMPARE(focused(), u"below"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"above"_s);
    }

    void aMenuIsWorkedByKeys()
    {
        show(kMenu);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"button"_s);
        press(Qt::Key_Return);
        QVERIFY(m_root->property("open").toBool());
        QCOMPARE(focused(), u"one"_s);
        press(Qt::Key_Up);
        QCOMPARE(focused(), u"three"_s); // round the end
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"one"_s); // and never out of the menu
        press(Qt::Key_Escape);
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), -1);
        QCOMPARE(focused(), u"button"_s);
        press(Qt::Key_Return);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), 1);
        QCOMPARE(focused(), u"button"_s);
    }

    void aMenuClosesByAPressElsewhere()
    {
        show(kMenu);
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {20, 10});
        QVERIFY(m_root->property("open").toBool());
        m_view->grabWindow();
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {350, 280});
        QVERIFY(!m_root->property("open").toBool());
        QCOMPARE(m_root->property("chosen").toInt(), -1);
        QVERIFY(focused().isEmpty()); // who works with the pointer sees no ring
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {20, 10});
        QVERIFY(m_root->property("open").toBool());
        close(); // an open one goes with its window, and nothing crashes
    }

private:
    /// What doesn't move draws nothing.
    bool moves()
    {
        QTest::qWait(50); // the frames of the last change
        const QSignalSpy frames(m_view.get(), &QQuickWindow::frameSwapped);
        return QTest::qWaitFor([&frames] { return !frames.isEmpty(); }, 300);
    }
    QQuickItem *show(const QString &qml, const QVariantMap &properties = {})
    {
        return m_root = showQml(qml, {400, 300}, properties);
    }
    QQuickItem *m_root = nullptr;
};

const Registered<PrimitivesTest> registered;

} // namespace velto

#include "PrimitivesTest.moc"
