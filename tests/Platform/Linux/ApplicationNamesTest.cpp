#include "Platform/Linux/ApplicationNames.h"
#include "RunTests.h"

using namespace velto;
using namespace Qt::StringLiterals;

/// Which application a window belongs to. The classes were read with xprop.
class ApplicationNamesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void names_data()
    {
        columns<QString, QString, QString>({"instance", "windowClass", "identifier"});
        const auto terminal = u"com.apple.Terminal"_s;
        QTest::newRow("xterm") << u"xterm"_s << u"XTerm"_s << terminal;
        QTest::newRow("xterm under another name") << u"mail"_s << u"UXTerm"_s << terminal;
        QTest::newRow("gnome-terminal") << u"gnome-terminal-server"_s << u"Gnome-terminal"_s << terminal;
        QTest::newRow("kitty with a class of the user's") << u"kitty"_s << u"scratch"_s << terminal;
        QTest::newRow("ghostty") << u"ghostty"_s << u"com.mitchellh.ghostty"_s << u"com.mitchellh.ghostty"_s;
        QTest::newRow("OBS") << u"obs"_s << u"obs"_s << u"com.obsproject.obs-studio"_s;
        QTest::newRow("Spotify") << u"spotify"_s << u"Spotify"_s << u"com.spotify.client"_s;
        QTest::newRow("Code") << u"code"_s << u"Code"_s << u"com.microsoft.VSCode"_s;
        QTest::newRow("VSCodium") << u"vscodium"_s << u"VSCodium"_s << u"com.microsoft.VSCode"_s;
        QTest::newRow("Cursor") << u"cursor"_s << u"Cursor"_s << u"com.todesktop.cursor"_s;
        QTest::newRow("an IDE keeps its own") << u"jetbrains-clion"_s << u"jetbrains-clion"_s << u"jetbrains-clion"_s;
        QTest::newRow("an unknown one") << u"Navigator"_s << u"firefox-esr"_s << u"firefox-esr"_s;
        QTest::newRow("no class") << u"tool"_s << QString() << u"tool"_s;
        QTest::newRow("nothing") << QString() << QString() << QString();
    }
    void names()
    {
        QFETCH(QString, instance);
        QFETCH(QString, windowClass);
        QTEST(identifierForClass(instance, windowClass), "identifier");
    }
    void programsByProcess()
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
};

static const Registered<ApplicationNamesTest> kAdded;
#include "ApplicationNamesTest.moc"
