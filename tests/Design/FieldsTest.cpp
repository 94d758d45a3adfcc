#include "ViewWindow.h"

#include "Core/DateModel.h"
#include "Design/LineValidator.h"
#include "Design/Theme.h"
#include "Platform/Fake/FakeClock.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kSegments =
    u"ListModel { id: model\n"
    "ListElement { value: 'a'; text: 'Today'; selected: false }\n"
    "ListElement { value: 'b'; text: 'Overdue'; selected: true }\n"
    "ListElement { value: 'c'; text: 'All'; selected: false } }\n"
    "SegmentedControl { objectName: 'control'; title: 'Show'; options: model; onChosen: value => { root.said += value\n"
    "for (let i = 0; i < model.count; ++i) model.setProperty(i, 'selected', model.get(i).value === value) } }\n"
    "PillButton { y: 200; text: 'after' }\n"_s;

} // namespace

/// Fields, check boxes and choices: used with the keyboard alone, and as a screen reader reads them.
class FieldsTest : public ViewWindow {
    Q_OBJECT
private Q_SLOTS:
    /// The toolkit would keep the window for a minute.
    void aLineThatCantBeDrawnIsRefused()
    {
        const auto taken = [](QString text) {
            int cursor = 0;
            return LineValidator().validate(text, cursor) == QValidator::Acceptable;
        };
        for (const QString &heavy : {u"\U0001F469\u200D\U0001F4BB"_s, u"\u0645\u0631\u062D 1 "_s, u"a\t"_s, u"\u6F22a"_s})
            QVERIFY2(!taken(heavy.repeated(40'000)), qPrintable(heavy));
        for (const QString &light : {u"word "_s, u"\u0441\u043B\u043E\u0432\u043E "_s, u"\U0001F600"_s, u"\u6F22\u5B57"_s})
            QVERIFY2(taken(light.repeated(80'000)), qPrintable(light));
    }
    void oneOfAFewIsChosen()
    {
        show(kSegments);
        click(named(u"All"_s));
        QCOMPARE(m_root->property("said").toString(), u"c"_s);
        QVERIFY(focused().isEmpty()); // pointer users see no ring
        show(kSegments);
        QCOMPARE(accessible(item(u"control"_s))->text(QAccessible::Name), u"Show"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Overdue"_s);
        QVERIFY(focusedState().checked);
        press(Qt::Key_Right);
        QCOMPARE(focused(), u"All"_s);
        QVERIFY(focusedState().checked);
        press(Qt::Key_Left);
        press(Qt::Key_Left);
        press(Qt::Key_Left); // doesn't wrap around
        QCOMPARE(focused(), u"Today"_s);
        QCOMPARE(m_root->property("said").toString(), u"cbaa"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"after"_s);
        press(Qt::Key_Backtab);
        QCOMPARE(focused(), u"Today"_s);
    }

    void aLineIsTyped()
    {
        show(
            u"TextInputField { objectName: 'field'; label: 'Search'; prompt: 'Search todos'; onEdited: text => root.said = text }"_s);
        const QImage plain = m_view->grabWindow();
        m_root->setProperty("enabled", false);
        QVERIFY2(m_view->grabWindow() == plain, "a panel that closes fades its fields");
        m_root->setProperty("enabled", true);
        press(Qt::Key_Tab);
        QVERIFY2(m_view->grabWindow() != plain, "the focus can't be seen");
        Theme::of(m_view->engine())->setKeyboardElsewhere(true);
        QVERIFY2(m_view->grabWindow() == plain, "the field promises that what is typed arrives");
        Theme::of(m_view->engine())->setKeyboardElsewhere(false);
        QCOMPARE(focused(), u"Search"_s);
        QCOMPARE(accessible(m_view->activeFocusItem())->role(), QAccessible::EditableText);
        QCOMPARE(accessible(m_view->activeFocusItem())->text(QAccessible::Description), u"Search todos"_s);
        type(u"abc"_s);
        QCOMPARE(m_root->property("said").toString(), u"abc"_s);
        m_view->contentItem()->forceActiveFocus();
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {4, 4}); // its edge, too
        QCOMPARE(focused(), u"Search"_s);
    }

    void aLineIsClearedOrASecret()
    {
        show(u"TextInputField { label: 'Search'; clearable: true; text: root.said; onEdited: text => root.said = text }"_s);
        QVERIFY(!named(u"Clear"_s));
        press(Qt::Key_Tab);
        type(u"abc"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Clear"_s);
        press(Qt::Key_Return);
        QCOMPARE(m_root->property("said").toString(), QString());
        QCOMPARE(focused(), u"Search"_s);
        type(u"d"_s);
        QCOMPARE(m_root->property("said").toString(), u"d"_s);
        click(named(u"Clear"_s));
        QCOMPARE(m_root->property("said").toString(), QString());

        show(
            u"TextInputField { label: 'Token'; prompt: label; secure: true; named: true; onEdited: text => root.said = text }"_s);
        QCOMPARE(seen(), QStringList{u"Token"_s});
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Token"_s);
        type(u"secret"_s);
        QCOMPARE(m_root->property("said").toString(), u"secret"_s);
        QVERIFY(focusedState().passwordEdit);
        QCOMPARE(seen(), QStringList{QString(6, u'•') + u" | Token"_s});
    }

    void severalLinesGrowAndThenScroll()
    {
        show(u"TextAreaField { objectName: 'field'; width: 200; label: 'Notes'; onEdited: text => root.said = text }"_s);
        const double two = item(u"field"_s)->height();
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Notes"_s);
        QVERIFY(focusedState().multiLine);
        QList<double> heights;
        for (int i = 0; i < 7; ++i) {
            type(u"x"_s);
            heights.append(item(u"field"_s)->height());
            press(Qt::Key_Return);
        }
        QCOMPARE(heights.at(1), two);
        QVERIFY(heights.at(2) > two && heights.at(4) > heights.at(3));
        QCOMPARE(heights.at(6), heights.at(4));
        QCOMPARE(m_root->property("said").toString(), u"x\nx\nx\nx\nx\nx\nx\n"_s);
        QCOMPARE(m_root->property("saved").toInt(), 0); // Return is a line break
        QQuickItem *edit = m_view->activeFocusItem();
        const double line = edit->property("cursorRectangle").toRectF().bottom();
        QVERIFY(edit->mapToItem(item(u"field"_s), {0, line}).y() <= item(u"field"_s)->height());
    }

    void boxesAndSwitchesAskForTheOtherState()
    {
        for (const auto &control : {u"CheckField"_s, u"SwitchField"_s}) {
            show(control
                 + u" { objectName: 'field'; text: 'Due'; checked: root.said === 'true'; onToggled: on => root.said = on }"_s);
            press(Qt::Key_Tab);
            QCOMPARE(focused(), u"Due"_s);
            QCOMPARE(accessible(m_view->activeFocusItem())->role(), QAccessible::CheckBox);
            QVERIFY(!focusedState().checked);
            press(Qt::Key_Space);
            QVERIFY(focusedState().checked);
            click(item(u"field"_s));
            QVERIFY(!focusedState().checked);
            QAccessibleActionInterface *action = accessible(item(u"field"_s))->actionInterface();
            action->doAction(QAccessibleActionInterface::toggleAction());
            QVERIFY(focusedState().checked);
            QCOMPARE(m_root->property("said").toString(), u"true"_s);
        }
    }

    void returnGoesOnToTheForm()
    {
        show(
            u"TextInputField { label: 'one' }\nCheckField { y: 40; text: 'two' }\nDateField { y: 80; label: 'three'; date: "
            u"root.date "
            u"}\n"
            "SegmentedControl { y: 120; title: 'x'; options: ListModel { ListElement { value: 'a'; text: 'four'; selected: true } } }"_s);
        int saved = 0;
        for (const QString &name : {u"one"_s, u"two"_s, u"three"_s}) {
            press(Qt::Key_Tab);
            QCOMPARE(focused(), name);
            press(Qt::Key_Return);
            QCOMPARE(m_root->property("saved").toInt(), ++saved);
        }
        press(Qt::Key_Tab); // the date's button, which Return presses
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"four"_s);
        press(Qt::Key_Return);
        QCOMPARE(m_root->property("saved").toInt(), ++saved);
    }

    void aDateIsTyped()
    {
        show(u"DateField { label: 'Due date'; date: root.date }\nPillButton { y: 100; text: 'after' }"_s);
        press(Qt::Key_Tab);
        QCOMPARE(focused(), u"Due date"_s);
        QQuickItem *field = m_view->activeFocusItem();
        const auto description = [field] { return accessible(field)->text(QAccessible::Description); };
        QCOMPARE(field->property("text").toString(), u"11/21/2026"_s);
        QCOMPARE(description(), u"Saturday, November 21, 2026"_s);
        QTest::keySequence(m_view.get(), QKeySequence::SelectAll);
        type(u"3-4-27"_s);
        QCOMPARE(field->property("text").toString(), u"3-4-27"_s); // as it is typed
        QCOMPARE(m_date->date(), QDate(2027, 3, 4));
        press(Qt::Key_Tab);
        QCOMPARE(field->property("text").toString(), u"3/4/2027"_s);
        press(Qt::Key_Backtab);
        type(u"x"_s);
        QCOMPARE(description(), u"Not a date"_s);
        press(Qt::Key_Tab);
        QVERIFY(m_date->unreadable());
        QCOMPARE(field->property("text").toString(), u"3/4/2027x"_s); // so that the mistake shows
        m_date->pickToday();
        QCOMPARE(field->property("text").toString(), u"11/21/2026"_s);
    }

    void aDateIsPickedByKeys()
    {
        show(u"DateField { objectName: 'field'; label: 'Due date'; date: root.date }"_s);
        press(Qt::Key_Tab);
        press(Qt::Key_Down);
        QVERIFY(item(u"field"_s)->property("opened").toBool());
        QVERIFY(named(u"Due date, November 2026"_s));
        QCOMPARE(focused(), u"Saturday, November 21, 2026, today"_s);
        QVERIFY(focusedState().selected);
        const QList<std::pair<Qt::Key, QString>> steps{
            {Qt::Key_Right, u"Sunday, November 22, 2026"_s},    {Qt::Key_Down, u"Sunday, November 29, 2026"_s},
            {Qt::Key_Down, u"Sunday, December 6, 2026"_s},      {Qt::Key_End, u"Saturday, December 12, 2026"_s},
            {Qt::Key_Home, u"Sunday, December 6, 2026"_s},      {Qt::Key_Left, u"Saturday, December 5, 2026"_s},
            {Qt::Key_Up, u"Saturday, November 28, 2026"_s},     {Qt::Key_PageDown, u"Monday, December 28, 2026"_s},
            {Qt::Key_PageUp, u"Saturday, November 28, 2026"_s},
        };
        for (const auto &[key, day] : steps) {
            press(key);
            QCOMPARE(focused(), day);
        }
        press(Qt::Key_PageDown, Qt::ShiftModifier);
        QCOMPARE(focused(), u"Sunday, November 28, 2027"_s);
        press(Qt::Key_Escape);
        QVERIFY(!item(u"field"_s)->property("opened").toBool());
        QCOMPARE(m_date->date(), QDate(2026, 11, 21)); // as before
        QCOMPARE(focused(), u"Due date"_s);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QVERIFY(!item(u"field"_s)->property("opened").toBool());
        QCOMPARE(m_date->date(), QDate(2026, 11, 28));
        QCOMPARE(focused(), u"Due date"_s);
        QCOMPARE(m_root->property("saved").toInt(), 0);
    }

    void theCalendarTurnsItsPages()
    {
        show(u"DateField { objectName: 'field'; label: 'Due date'; date: root.date }\nPillButton { y: 380; text: 'behind' }"_s);
        click(named(u"Choose a date"_s));
        click(named(u"Next month"_s));
        QVERIFY(named(u"Due date, December 2026"_s));
        QCOMPARE(m_date->date(), QDate(2026, 11, 21));
        QStringList stops;
        for (int i = 0; i < 4; ++i) {
            press(Qt::Key_Tab);
            stops += focused();
        }
        stops.sort(); // it goes round and never outside
        QCOMPARE(stops.join(u'|'), u"Next month|Previous month|Today|Tuesday, December 1, 2026"_s);
        named(u"Tuesday, December 1, 2026"_s)->forceActiveFocus();
        press(Qt::Key_Right); // starts at the current place
        QCOMPARE(focused(), u"Wednesday, December 2, 2026"_s);
        click(named(u"Thursday, December 24, 2026"_s));
        QCOMPARE(m_date->date(), QDate(2026, 12, 24));
        QVERIFY(!item(u"field"_s)->property("opened").toBool());
    }

    void theCalendarLeavesItsFieldInSight()
    {
        // Below, above, right and left of it; then smaller, on the side with more room.
        for (const QPoint &place : {QPoint(100, 20), {100, 350}, {0, 190}, {268, 190}, {130, 120}, {130, 250}}) {
            show(u"DateField { objectName: 'field'; x: %1; y: %2; label: 'Due date'; date: root.date }"_s.arg(place.x()).arg(
                place.y()));
            click(named(u"Choose a date"_s));
            m_view->grabWindow();
            QRectF calendar;
            for (const QString &name :
                 {u"Previous month"_s, u"Sunday, November 1, 2026"_s, u"Saturday, December 12, 2026"_s, u"Today"_s})
                calendar |= onScreen(named(name));
            const QByteArray where = QByteArray::number(place.x()) + ", " + QByteArray::number(place.y());
            QVERIFY2(calendar.height() > 180 && QRectF(8, 8, 384, 384).contains(calendar), where.constData());
            QVERIFY2(!calendar.intersects(onScreen(item(u"field"_s))), where.constData());
            close();
        }
    }

    void theCalendarClosesByAPressElsewhere()
    {
        show(u"DateField { objectName: 'field'; y: 350; label: 'Due date'; date: root.date }"_s);
        click(named(u"Choose a date"_s));
        press(Qt::Key_Right);
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, {390, 20});
        QVERIFY(!item(u"field"_s)->property("opened").toBool());
        QCOMPARE(m_date->date(), QDate(2026, 11, 21));
        click(named(u"Choose a date"_s));
        QVERIFY(item(u"field"_s)->property("opened").toBool());
        close(); // an open one is destroyed with its window without a crash
    }

private:
    /// Shows the QML in a window of 400 by 400, with `date` available to it.
    void show(const QString &qml)
    {
        m_date = std::make_unique<DateModel>(m_clock);
        m_root = showQml(u"Item { id: root; width: 400; height: 400\n"
                         "property DateModel date\nproperty string said\nproperty int saved: 0\n"
                         "Keys.onReturnPressed: ++root.saved\n"_s
                             + qml + u'}',
                         {400, 400}, {{u"date"_s, QVariant::fromValue(m_date.get())}});
        QVERIFY(m_root);
    }
    static QRectF onScreen(const QQuickItem *item) { return item ? item->mapRectToScene({{}, item->size()}) : QRectF(); }
    QAccessible::State focusedState() const { return accessible(m_view->activeFocusItem())->state(); }
    static QAccessibleInterface *accessible(QQuickItem *item)
    {
        return item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    }
    QQuickItem *item(const QString &objectName) const { return m_root->findChild<QQuickItem *>(objectName); }

    FakeClock m_clock; // Saturday, 21 November 2026
    std::unique_ptr<DateModel> m_date;
    QQuickItem *m_root = nullptr;
};

const Registered<FieldsTest> registered;

} // namespace velto

#include "FieldsTest.moc"
