#include "App/Windows.h"
#include "Platform/Appearance.h"
#include "Settings/Desk.h"
#include "Warnings.h"

#include <QAccessible>
#include <QDir>
#include <QGuiApplication>
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

QList<QQuickItem *> controlsBelow(QQuickItem *root)
{
    QList<QQuickItem *> controls;
    for (QQuickItem *child : root->childItems()) {
        if (!child->isVisible())
            continue;
        if (child->activeFocusOnTab())
            controls.append(child);
        controls += controlsBelow(child);
    }
    return controls;
}

class LightAppearance final : public Appearance {
public:
    void follow() override { }
    bool dark() const override { return false; }
};

} // namespace

class WindowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<Desk>();
        m_windows = std::make_unique<Windows>(m_appearance, m_desk->needs, m_desk->welcome);
        QVERIFY(QDir(m_desk->folder.path()).mkdir(u".claude"_s));
        Warnings::start();
    }

    void cleanup()
    {
        m_windows.reset();
        m_desk.reset();
        const QStringList warnings = Warnings::stop();
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(u'\n')));
    }

    void everyControlCanBeReachedByKeysAndHasAName_data()
    {
        QTest::addColumn<int>("pane");
        QTest::addColumn<QStringList>("some");
        QTest::newRow("general") << 0 << QStringList{u"Starting view, Custom"_s, u"What matters most today?"_s};
        QTest::newRow("modules") << 1 << QStringList{u"AI agents"_s, u"Git repos with unsaved work"_s};
        QTest::newRow("claude") << 2 << QStringList{u"Connect…"_s};
        QTest::newRow("work") << 3 << QStringList{u"Linear API key, Paste here"_s, u"Site"_s, u"Save API token"_s};
        QTest::newRow("quillbox") << 4 << QStringList{u"Hub address"_s, u"Access token, qb_…"_s, u"Test & Save"_s};
        QTest::newRow("about") << 5 << QStringList{u"Remove Velto's changes and quit…"_s};
        QTest::newRow("welcome") << -1 << QStringList{u"Mode, Custom"_s, u"Todos"_s, u"Start using Velto"_s};
    }

    void everyControlCanBeReachedByKeysAndHasAName()
    {
        QFETCH(int, pane);
        QFETCH(QStringList, some);
        if (pane < 0)
            openWelcome();
        else
            openPane(pane);
        QStringList names;
        for (QQuickItem *control : controlsBelow(m_window->contentItem()))
            names += spoken(control);
        QVERIFY2(!names.contains(QString()), qPrintable(names.join(u'|')));
        for (const QString &name : some)
            QVERIFY2(names.contains(name), qPrintable(name + u" in "_s + names.join(u'|')));
    }

    void aSwitchChangesWhatItSaysAtOnce()
    {
        openPane(0);
        press(u"Stay quiet while I record my screen"_s);
        QVERIFY(!m_desk->prefs.quietWhileRecording());
        // Where the wish isn't met it goes back.
        m_desk->loginItem.allowed = false;
        press(u"Open Velto when you log in"_s);
        QCOMPARE(named(u"Open Velto when you log in"_s)->property("checked"), QVariant(false));
        openPane(1);
        press(u"Todos"_s);
        QVERIFY(!m_desk->prefs.isOn(Prefs::Module::Todos));
    }

    void whatChangedMeanwhileShowsOnReturn()
    {
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
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_Tab, Qt::Key_Return})
            QTest::keyClick(m_window, key);
        m_desk->background.finishAll();
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Linear API key, Saved"_s);
        QTest::keyClick(m_window, Qt::Key_Tab);
        QTest::keyClick(m_window, Qt::Key_Return);
        m_desk->background.finishAll();
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Linear API key, Paste here"_s);
    }

    void theWelcomeEndsByItsButtonAndByReturn()
    {
        const QSignalSpy done(m_windows.get(), &Windows::welcomed);
        openWelcome();
        press(u"Start using Velto"_s);
        QCOMPARE(done.count(), 1);
        QVERIFY(!m_window->isVisible());
        QVERIFY(!m_desk->loginItem.on);
        openWelcome();
        press(u"Open Velto when I log in"_s);
        m_window->requestActivate();
        named(u"Todos"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(m_window, Qt::Key_Return); // from anywhere in it
        QCOMPARE(done.count(), 2);
        QVERIFY(!m_window->isVisible());
        QVERIFY(m_desk->loginItem.on);
    }

    void aTokenIsNeverShown()
    {
        openPane(3);
        QQuickItem *field = named(u"Linear API key, Paste here"_s);
        field->forceActiveFocus(Qt::TabFocusReason);
        m_window->requestActivate();
        QTest::keyClick(m_window, Qt::Key_X);
        QCOMPARE(field->property("text").toString(), u"x"_s);
        QVERIFY(!field->property("displayText").toString().contains(u'x'));
    }

    void theResetIsAskedForTwice()
    {
        const QSignalSpy quit(m_windows.get(), &Windows::quitWanted);
        openPane(5);
        press(u"Remove Velto's changes and quit…"_s);
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Cancel"_s);
        QTest::keyClick(m_window, Qt::Key_Return);
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Remove Velto's changes and quit…"_s);
        QCOMPARE(quit.count(), 0);
        press(u"Remove Velto's changes and quit…"_s);
        QTRY_COMPARE(spoken(m_window->activeFocusItem()), u"Cancel"_s);
        QTest::keyClick(m_window, Qt::Key_Tab);
        QTest::keyClick(m_window, Qt::Key_Return);
        QCOMPARE(quit.count(), 1);
    }

private:
    /// The window of that title, once it is there.
    void take(const QString &title)
    {
        m_window = nullptr;
        for (QWindow *window : QGuiApplication::topLevelWindows())
            if (window->title() == title)
                m_window = qobject_cast<QQuickWindow *>(window);
        QVERIFY2(m_window, qPrintable(title));
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
    }
    void openWelcome()
    {
        m_windows->showWelcome();
        take(u"Welcome to Velto"_s);
    }
    void openPane(int index)
    {
        m_windows->showSettings();
        take(u"Velto Settings"_s);
        QVERIFY(QMetaObject::invokeMethod(m_window, "show", Q_ARG(int, index)));
        m_desk->background.finishAll();
        QCoreApplication::processEvents();
    }
    QQuickItem *named(const QString &name)
    {
        for (QQuickItem *control : controlsBelow(m_window->contentItem())) {
            if (spoken(control) == name)
                return control;
        }
        return nullptr;
    }
    void press(const QString &name)
    {
        QQuickItem *control = named(name);
        QVERIFY2(control, qPrintable(name));
        control->forceActiveFocus(Qt::TabFocusReason); // which brings it into sight
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          control->mapToScene(QPointF(control->width() / 2, control->height() / 2)).toPoint());
    }

    LightAppearance m_appearance;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<Windows> m_windows;
    QQuickWindow *m_window = nullptr;
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
