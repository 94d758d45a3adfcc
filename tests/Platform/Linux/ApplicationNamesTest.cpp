#include "Platform/Linux/ApplicationNames.h"
#include "RunTests.h"

using namespace velto;
using namespace Qt::StringLiterals;

/// Which application a window belongs to. The classes were read with xprop.
class ApplicationNamesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void names()
    {
        const auto terminal = u"com.apple.Terminal"_s;
        QCOMPARE(identifierForClass(u"mail"_s, u"UXTerm"_s), terminal); // with another instance
        QCOMPARE(identifierForClass(u"kitty"_s, u"scratch"_s), terminal); // with a class of the user's choice
        QCOMPARE(identifierForClass(u"ghostty"_s, u"com.mitchellh.ghostty"_s), u"com.mitchellh.ghostty"_s);
        QCOMPARE(identifierForClass(u"obs"_s, u"obs"_s), u"com.obsproject.obs-studio"_s);
        QCOMPARE(identifierForClass(u"vscodium"_s, u"VSCodium"_s), u"com.microsoft.VSCode"_s);
        for (const auto &own : {u"jetbrains-clion"_s, u"firefox-esr"_s, QString()})
            QCOMPARE(identifierForClass(own, own), own);
        QCOMPARE(identifierForClass(u"tool"_s, {}), u"tool"_s);
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
        QCOMPARE(program("gpu-screen-reco", "gpu-screen-recorder-gtk"), u"none"_s); // its window, not the recorder
        QCOMPARE(program("ffmpeg", "film.mkv"), u"none"_s);
        QCOMPARE(program("obscura"), u"none"_s);
        QCOMPARE(program("swaylock"), u"locks"_s);
        QCOMPARE(program("swayidle"), u"none"_s); // it only waits until it's time to lock
    }
};

static const Registered<ApplicationNamesTest> kAdded;
#include "ApplicationNamesTest.moc"
