#include "App/Windows.h"
#include "Design/ItemAccessible.h"
#include "Platform/Appearance.h"
#include "RunTests.h"
#include "Settings/Desk.h"
#include "Warnings.h"

#include <QAccessible>
#include <QDir>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString spoken(QQuickItem *item)
{
    const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    if (!interface)
        return {};
    const QString name = interface->text(QAccessible::Name);
    return name.isEmpty() ? interface->text(QAccessible::Description) : name;
}

template <typename Wanted> QList<QQuickItem *> below(QQuickItem *root, Wanted wanted)
{
    QList<QQuickItem *> all;
    for (QQuickItem *child : root->childItems()) {
        if (!child->isVisible())
            continue;
        if (wanted(child))
            all.append(child);
        all += below(child, wanted);
    }
    return all;
}

/// The action with which a screen reader presses it; empty if there is none.
QString actionOf(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    QAccessibleActionInterface *actions = interface ? interface->actionInterface() : nullptr;
    for (const QString &name : {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
        if (actions && actions->actionNames().contains(name))
            return name;
    }
    return {};
}

QList<QQuickItem *> pressableBelow(QQuickItem *root)
{
    return below(root, [](QQuickItem *item) { return !actionOf(item).isEmpty(); });
}

} // namespace

class WindowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        tellWhatIsGreyed();
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
    }

    void init()
    {
        m_desk = std::make_unique<Desk>();
        m_done.clear();
        connect(m_desk->settings.about(), &AboutSettings::quitWanted, this, [this] { m_done += u"quit"_s; });
        QVERIFY(QDir(m_desk->folder.path()).mkdir(u".claude"_s));
        Warnings::start();
    }

    void cleanup()
    {
        m_own.reset();
        m_welcome.reset();
        m_desk.reset();
        const QStringList warnings = Warnings::stop();
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
    }

    void aScreenReadersPressDoesWhatAClickDoes()
    {
        const auto row = [this](int pane, const QStringList &first, int effective) {
            for (int place = 0;; ++place) {
                QStringList outcomes;
                for (const bool clicked : {true, false}) {
                    cleanup();
                    init();
                    openWindow(pane);
                    for (const QString &name : first) {
                        press(name);
                        QTest::qWait(50);
                    }
                    QVERIFY(first.isEmpty() || overlay());
                    const auto controls = pressableBelow(first.isEmpty() ? m_window->contentItem() : overlay());
                    if (place >= controls.size()) {
                        QVERIFY2(effective == 0, qPrintable(QString::number(pane) + first.join(u' ')));
                        return;
                    }
                    QQuickItem *control = controls.at(place);
                    const QString before = told();
                    if (clicked)
                        click(control);
                    else
                        QAccessible::queryAccessibleInterface(control)->actionInterface()->doAction(actionOf(control));
                    QTest::qWait(20);
                    outcomes += spoken(control) + u": "_s + told();
                    effective -= clicked && told() != before;
                }
                QCOMPARE(outcomes.last(), outcomes.first());
            }
        };
        // So many controls have an effect. A pane's own tab button counts too where the pane reads the keyring as it opens.
        row(0, {}, 10);
        row(0, {u"Starting view, Custom"_s}, 5);
        row(1, {}, 15);
        row(2, {}, 6);
        row(2, {u"Connect…"_s}, 2);
        row(3, {}, 6);
        row(4, {}, 6);
        row(5, {}, 6);
        row(5, {u"Remove Velto's changes and quit…"_s}, 2);
        row(-1, {}, 15); // the welcome
        row(-1, {u"What changes?"_s}, 1);
    }

    void whatIsGreyedOrUnderADialogIsSoForAScreenReaderToo()
    {
        openPane(3);
        QQuickItem *save = named(u"Save Linear API key"_s);
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(save);
        QVERIFY(interface->state().disabled);
        QVERIFY(actionOf(save).isEmpty());
        interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        m_desk->background.finishAll();
        QVERIFY(m_desk->keychain.entries.isEmpty());
        named(u"Linear API key, Paste here"_s)->setProperty("text", u"x"_s);
        QVERIFY(!interface->state().disabled);
        QVERIFY(interface->parent()->indexOfChild(interface) >= 0);

        openPane(5);
        press(u"Remove Velto's changes and quit…"_s);
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Cancel"_s);
        const auto act = [](QQuickItem *control) {
            QAccessible::queryAccessibleInterface(control)->actionInterface()->doAction(actionOf(control));
        };
        act(named(u"General"_s));
        QCOMPARE(m_window->property("shown"), QVariant(5));
        act(m_window->activeFocusItem());
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Remove Velto's changes and quit…"_s);
        act(named(u"General"_s));
        QCOMPARE(m_window->property("shown"), QVariant(0));
    }

    void aSwitchChangesWhatItSaysAtOnce()
    {
        openPane(0);
        press(u"Stay quiet while I record my screen"_s);
        QVERIFY(!m_desk->prefs.quietWhileRecording());
        // A switch whose change is refused goes back.
        m_desk->loginItem.allowed = false;
        press(u"Open Velto when you log in"_s);
        QCOMPARE(named(u"Open Velto when you log in"_s)->property("checked"), QVariant(false));
        QVERIFY(saying(u"It can't be written: Read-only file system."_s));
        // And if a setting can't be saved, every pane says so.
        bool full = true;
        m_desk->writer.write(u"/full/settings.json"_s, [&full] {
            return FileWriter::Outcome{full ? std::optional(FileError{u"The disk is full."_s}) : std::nullopt, {}};
        });
        m_desk->background.finishAll();
        openPane(1);
        QVERIFY(saying(u"Not saved yet. The disk is full. Velto keeps trying."_s));
        full = false;
        press(u"Try again"_s);
        QVERIFY(!named(u"Try again"_s));
        press(u"Todos"_s);
        QVERIFY(!m_desk->prefs.isOn(Prefs::Module::Todos));
    }

    void whatChangedMeanwhileShowsOnReturn()
    {
        openWindow(-1);
        for (const bool login : {true, false}) {
            m_welcome->setProperty("login", login);
            QCOMPARE(named(u"Open Velto when I log in"_s)->property("checked").toBool(), login);
        }
        openPane(2);
        QVERIFY(named(u"Connect…"_s));
        m_window->close();
        QVERIFY(QDir(m_desk->folder.path()).rmdir(u".claude"_s));
        m_window->show();
        m_window->requestActivate();
        QTRY_VERIFY(!named(u"Connect…"_s)->isEnabled());
    }

    void theKeyboardStaysWhereAButtonWent()
    {
        openPane(3);
        named(u"Linear API key, Paste here"_s)->forceActiveFocus(Qt::TabFocusReason);
        m_window->requestActivate();
        // What the keyring refuses comes back into its field.
        m_desk->keychain.keeps = false;
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_Return})
            QTest::keyClick(m_window, key);
        QCOMPARE(m_window->activeFocusItem()->property("text"), QVariant(QString()));
        m_desk->background.finishAll();
        QVERIFY(saying(u"The keyring couldn't keep it: perhaps it is locked, or none is running."_s));
        m_desk->keychain.keeps = true;
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return})
            QTest::keyClick(m_window, key);
        m_desk->background.finishAll();
        QCOMPARE(m_desk->keychain.get(u"Velto.linear"_s), u"x"_s);
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Linear API key, Saved"_s);
        QTest::keyClick(m_window, Qt::Key_Tab);
        QTest::keyClick(m_window, Qt::Key_Return);
        m_desk->background.finishAll();
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Linear API key, Paste here"_s);

        // A click on a section takes it along, without the ring.
        QQuickItem *section = named(u"Modules"_s);
        const auto edge = [&] {
            return m_window->grabWindow().pixelColor(section->mapToScene({1, section->height() / 2}).toPoint());
        };
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          section->mapToScene({section->width() / 2, section->height() / 2}).toPoint());
        QCOMPARE(spoken(m_window->activeFocusItem()), u"Modules"_s);
        const QColor clicked = edge();
        QTest::keyClick(m_window, Qt::Key_Right);
        QTest::keyClick(m_window, Qt::Key_Left);
        QCOMPARE(spoken(m_window->activeFocusItem()), u"Modules"_s);
        QVERIFY(edge() != clicked);
    }

    /// The windows as the program has them: the welcome closes when it is finished, and the reset, confirmed, ends the program.
    void theProgramHearsHowTheyEnd()
    {
        class : public Appearance {
            void follow() override { }
            bool dark() const override { return true; }
        } appearance;
        Windows windows(appearance, m_desk->accessibility, m_desk->needs, m_desk->welcome);
        const QSignalSpy welcomed(&windows, &Windows::welcomed);
        const QSignalSpy quit(&windows, &Windows::quitWanted);
        const auto takeWindow = [this] {
            const auto all = QGuiApplication::topLevelWindows();
            const auto visible = std::ranges::find_if(all, &QWindow::isVisible);
            m_window = visible == all.end() ? nullptr : qobject_cast<QQuickWindow *>(*visible);
            QVERIFY(m_window && QTest::qWaitForWindowActive(m_window));
        };
        windows.showWelcome();
        takeWindow();
        named(u"Todos"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(m_window, Qt::Key_Return); // from anywhere in it
        QCOMPARE(welcomed.count(), 1);
        QVERIFY(!m_window->isVisible());

        windows.showSettings();
        takeWindow();
        QVERIFY(QMetaObject::invokeMethod(m_window, "show", Q_ARG(int, 5)));
        for (const bool sure : {false, true}) {
            press(u"Remove Velto's changes and quit…"_s);
            QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Cancel"_s);
            if (sure)
                QTest::keyClick(m_window, Qt::Key_Tab);
            QTest::keyClick(m_window, Qt::Key_Return);
            m_desk->background.finishAll();
            QCOMPARE(quit.count(), int(sure));
            if (!sure)
                QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Remove Velto's changes and quit…"_s);
        }
    }

private:
    void open(const char *file, QObject *store)
    {
        QQmlComponent component(&m_engine, QUrl(u"qrc:/qt/qml/Velto/Settings/"_s + QLatin1StringView(file)));
        m_own.reset(
            qobject_cast<QQuickWindow *>(component.createWithInitialProperties({{u"store"_s, QVariant::fromValue(store)}})));
        m_window = m_own.get();
        QVERIFY2(m_window, qPrintable(component.errorString()));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
    }
    void openPane(int index)
    {
        open("SettingsWindow.qml", &m_desk->settings);
        QVERIFY(QMetaObject::invokeMethod(m_window, "show", Q_ARG(int, index)));
        m_desk->background.finishAll();
        QCoreApplication::processEvents();
    }
    void openWindow(int pane)
    {
        if (pane >= 0) {
            openPane(pane);
            return;
        }
        m_welcome = std::make_unique<Welcome>(m_desk->welcome);
        connect(m_welcome.get(), &Welcome::done, this, [this] { m_done += u"done"_s; });
        open("WelcomeWindow.qml", m_welcome.get());
    }
    /// Everything that a press may have changed.
    QString told() const
    {
        QStringList all{m_done, m_desk->folderPanel.promptNow, QString::number(m_desk->background.pending())};
        for (QQuickItem *control : pressableBelow(m_window->contentItem()))
            all += spoken(control) + (QAccessible::queryAccessibleInterface(control)->state().checked ? u"*"_s : QString());
        m_desk->defaults.values.remove(u"hookToken"_s); // a different one each time
        for (const QString &key : m_desk->defaults.values.keys())
            all += key + u'=' + QDebug::toString(m_desk->defaults.values.value(key));
        all += m_window->property("shown").toString() + QString::number(m_desk->loginItem.on);
        all.sort();
        return all.join(u'|');
    }
    /// The layer of dialogs and lists; nothing below it can be clicked.
    QQuickItem *overlay() const
    {
        const auto children = m_window->contentItem()->childItems();
        const auto found =
            std::ranges::find_if(children, [](const QQuickItem *child) { return child->inherits("QQuickOverlay"); });
        return found == children.end() ? nullptr : *found;
    }
    QQuickItem *named(const QString &name)
    {
        const auto wanted = [&name](QQuickItem *item) { return item->activeFocusOnTab() && spoken(item) == name; };
        return below(m_window->contentItem(), wanted).value(0);
    }
    /// Whether this text is shown.
    bool saying(const QString &sentence) const
    {
        const auto says = [&](QQuickItem *item) { return item->property("text").toString() == sentence; };
        return !below(m_window->contentItem(), says).isEmpty();
    }
    void press(const QString &name)
    {
        QQuickItem *control = named(name);
        QVERIFY2(control, qPrintable(name));
        click(control);
    }
    void click(QQuickItem *control)
    {
        control->forceActiveFocus(Qt::TabFocusReason); // which scrolls it into sight
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          control->mapToScene(QPointF(control->width() / 2, control->height() / 2)).toPoint());
    }

    QQmlEngine m_engine;
    QString m_done;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<Welcome> m_welcome;
    QQuickWindow *m_window = nullptr;
    std::unique_ptr<QQuickWindow> m_own;
};

} // namespace velto

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    velto::WindowsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "WindowsTest.moc"
