#include "Platform/Linux/LinuxWording.h"
#include "RunTests.h"

#include <QCoreApplication>

using namespace velto;
using namespace Qt::StringLiterals;

/// On Linux the program speaks of what a Linux desktop has, wherever in the program a text is.
class WordingTest : public QObject {
    Q_OBJECT

    static QString says(const char *text, const QString &installer = u"apt"_s)
    {
        LinuxWording wording([&](const QString &name) { return name == installer ? u"/usr/bin/"_s + name : QString(); });
        QCoreApplication::installTranslator(&wording);
        return QCoreApplication::translate("SomeView", text, "said somewhere");
    }

private Q_SLOTS:
    void rewordsWhatLinuxSaysOtherwise()
    {
        QCOMPARE(says("Scan this Mac"), u"Scan this computer"_s);
        QCOMPARE(says("Settings (⌘,)"), u"Settings (Ctrl+,)"_s);
        QCOMPARE(says("On this Mac · %1"), u"On this computer · %1"_s);
        QCOMPARE(says("Nothing needs you right now"), u"Nothing needs you right now"_s);
    }
    void namesTheCommandThatInstallsPackagesHere()
    {
        for (const auto &[installer, command] : {std::pair(u"apt"_s, u"apt install gh"_s),
                                                 {u"dnf"_s, u"dnf install gh"_s},
                                                 {u"pacman"_s, u"pacman -S github-cli"_s},
                                                 {u"none"_s, u"apt install gh"_s}})
            QCOMPARE(says("brew install gh && gh auth login", installer), u"sudo "_s + command + u" && gh auth login"_s);
    }
};

static const Registered<WordingTest> kAdded;
#include "WordingTest.moc"
