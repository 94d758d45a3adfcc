#include "Platform/Fake/FakeFiles.h"
#include "Platform/Linux/ApplicationNames.h"
#include "Platform/Linux/LinuxMachine.h"
#include "Platform/Linux/LinuxWording.h"
#include "Platform/Linux/QtDisplays.h"
#include "Platform/Linux/X11/LockModifiers.h"
#include "Platform/Posix/FilesTesting.h"
#include "RunTests.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kScrollLock = 0xff14;
constexpr xcb_keysym_t kAltLeft = 0xffe9;

} // namespace

/// What the names of windows and processes, the modifier map, the files of the machine and the panels of its displays mean; and
/// that the program speaks of what a Linux desktop has. The classes of windows were read with xprop; a device tree and a library
/// of panels stand in for those of a phone.
class ReadingTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_system;

    void become(const QByteArray &name)
    {
        const QDir folder(m_system.path());
        QVERIFY(folder.mkpath(u"firmware/devicetree/base"_s));
        writeFile(folder.filePath(u"firmware/devicetree/base/compatible"_s), name + '\0');
    }
    static QString says(const char *text, const QString &installer = u"apt"_s)
    {
        LinuxWording wording([&](const QString &name) { return name == installer ? u"/usr/bin/"_s + name : QString(); });
        QCoreApplication::installTranslator(&wording);
        return QCoreApplication::translate("SomeView", text, "said somewhere");
    }

private Q_SLOTS:
    void applicationOfAWindow()
    {
        const auto terminal = u"com.apple.Terminal"_s;
        QCOMPARE(identifierForClass(u"mail"_s, u"UXTerm"_s), terminal); // under another name
        QCOMPARE(identifierForClass(u"kitty"_s, u"scratch"_s), terminal); // with a class of the user's
        QCOMPARE(identifierForClass(u"ghostty"_s, u"com.mitchellh.ghostty"_s), u"com.mitchellh.ghostty"_s);
        QCOMPARE(identifierForClass(u"obs"_s, u"obs"_s), u"com.obsproject.obs-studio"_s);
        QCOMPARE(identifierForClass(u"vscodium"_s, u"VSCodium"_s), u"com.microsoft.VSCode"_s);
        for (const auto &own : {u"jetbrains-clion"_s, u"firefox-esr"_s, QString()})
            QCOMPARE(identifierForClass(own, own), own);
        QCOMPARE(identifierForClass(u"tool"_s, {}), u"tool"_s);
    }
    void programOfAProcess()
    {
        const auto program = [](const char *name, const QByteArray &arguments = {}) {
            const auto found = watchedProgram(name, [&arguments] { return arguments; });
            return !found ? u"none"_s : found->locks ? u"locks"_s : found->mayRest ? u"may rest"_s : found->identifier;
        };
        for (const char *name : {"obs", "simplescreenrec", "wf-recorder", "wl-screenrec"})
            QCOMPARE(program(name), u"com.obsproject.obs-studio"_s);
        QCOMPARE(program("gpu-screen-reco", "/usr/bin/gpu-screen-recorder"), u"com.obsproject.obs-studio"_s);
        QCOMPARE(program("ffmpeg", QByteArray("ffmpeg\0-f\0x11grab", 17)), u"com.obsproject.obs-studio"_s);
        QCOMPARE(program("spectacle"), u"may rest"_s);
        QCOMPARE(program("gpu-screen-reco", "gpu-screen-recorder-gtk"), u"none"_s); // its window only
        QCOMPARE(program("ffmpeg", "film.mkv"), u"none"_s);
        QCOMPARE(program("obscura"), u"none"_s);
        QCOMPARE(program("swaylock"), u"locks"_s);
        QCOMPARE(program("swayidle"), u"none"_s); // waits for the time to lock
    }

    void modifiersOfTheKeyboard()
    {
        ModifierSymbols map;
        map[3] = {kAltLeft};
        map[4] = {0, kNumLock};
        map[5] = {kScrollLock};
        QCOMPARE(altModifier(map), quint16(XCB_MOD_MASK_1));
        QCOMPARE(lockModifiers(map), quint16(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_3));

        map = {};
        map[6] = {kAltLeft, kNumLock};
        QCOMPARE(altModifier(map), quint16(XCB_MOD_MASK_4));
        // A lock on the very modifier of the key must not take the key's own meaning away.
        QCOMPARE(lockModifiers(map), quint16(XCB_MOD_MASK_LOCK));
    }
    void panelsOfSeveralDisplays()
    {
        const QRect left(0, 0, 1920, 1080);
        const QRect right(1920, 200, 1280, 800);
        const QList<TopStrut> struts{{28, 0, 1919}, {236, 1920, 3199}};
        QCOMPARE(topPanelHeight(struts, left), 28);
        QCOMPARE(topPanelHeight(struts, right), 36);
        QCOMPARE(topPanelHeight({}, left), 0);
        QCOMPARE(topPanelHeight({{28, 0, 1919}}, right), 0);
        QCOMPARE(statusBarThicknessFor(0), 24.0);
        QCOMPARE(statusBarThicknessFor(32), 32.0);
        QCOMPARE(statusBarThicknessFor(400), 24.0);
    }

    void nameOfTheMachine()
    {
        const QString host = QSysInfo::machineHostName();
        const auto row = [](const QByteArray &file, const QString &name) {
            FakeFiles files;
            if (!file.isNull())
                files.contents.insert(u"/etc/machine-info"_s, file);
            QCOMPARE(LinuxMachine(files).displayName(), name);
        };
        row({}, host);
        row("CHASSIS=laptop\nPRETTY_HOSTNAME=\"Sam\xe2\x80\x99s Desk\"\n", u"Sam’s Desk"_s);
        row("PRETTY_HOSTNAME=\"a \\\"b\\\" \\$c \\\\d\"", u"a \"b\" $c \\d"_s);
        row("PRETTY_HOSTNAME='a \\ b'\r\n", u"a \\ b"_s);
        row("PRETTY_HOSTNAME=\"\"\n", host);
        row("PRETTY_HOSTNAME=" + QByteArray(100'000, 'x'), host);
    }
    void housingInTheScreen()
    {
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA)); // no device tree, as on most machines
        become("stand-in,phone");
        QVERIFY(!builtInPanel(m_system.path(), "libno-such-library.so.0"));
        const auto panel = builtInPanel(m_system.path(), PANEL_DATA);
        QVERIFY(panel);
        QCOMPARE(panel->housing, QRect(390, 0, 300, 90)); // and not the hole in the corner
        become("other,phone");
        QVERIFY(!builtInPanel(m_system.path(), PANEL_DATA));

        const DisplayPanel phone{{1080, 2400}, {390, 0, 300, 90}};
        QCOMPARE(housingOn(phone, {1080, 2400}), QSizeF(300, 90));
        QCOMPARE(housingOn(phone, {360, 800}), QSizeF(100, 30)); // at a scale of 3
        QVERIFY(housingOn(phone, {800, 360}).isEmpty()); // lying on its side
        QCOMPARE(housingOn({{1080, 2400}, {500, 0, 140, 90}}, {1080, 2400}), QSizeF(200, 90)); // a little off the middle
        QVERIFY(isBuiltIn(u"DSI-1"_s));
        QVERIFY(!isBuiltIn(u"HDMI-A-1"_s));
    }

    void rewordsWhatLinuxSaysOtherwise()
    {
        QCOMPARE(says("Scan this Mac"), u"Scan this computer"_s);
        QCOMPARE(says("Settings (⌘,)"), u"Settings (Ctrl+,)"_s);
        QCOMPARE(says("Nothing needs you right now"), u"Nothing needs you right now"_s);
        for (const auto &[installer, command] : {std::pair(u"apt"_s, u"apt install gh"_s),
                                                 {u"dnf"_s, u"dnf install gh"_s},
                                                 {u"pacman"_s, u"pacman -S github-cli"_s},
                                                 {u"none"_s, u"apt install gh"_s}})
            QCOMPARE(says("brew install gh && gh auth login", installer), u"sudo "_s + command + u" && gh auth login"_s);
    }
};

static const Registered<ReadingTest> kAdded;
#include "ReadingTest.moc"
