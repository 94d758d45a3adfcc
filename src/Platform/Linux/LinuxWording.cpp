#include "Platform/Linux/LinuxWording.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The command that the catalogue writes for every distribution.
constexpr auto kInstall = "sudo apt install"_L1;
struct Installer {
    QLatin1StringView program;
    QLatin1StringView command;
};
constexpr std::array kInstallers{
    Installer{"apt"_L1, kInstall},
    Installer{"dnf"_L1, "sudo dnf install"_L1},
    Installer{"pacman"_L1, "sudo pacman -S"_L1},
    Installer{"zypper"_L1, "sudo zypper install"_L1},
};

QString installCommand(const std::function<QString(const QString &)> &find)
{
    for (const auto &[program, command] : kInstallers)
        if (!find(QString(program)).isEmpty())
            return QString(command);
    return QString(kInstall);
}

} // namespace

LinuxWording::LinuxWording(const std::function<QString(const QString &)> &find, QObject *parent)
    : QTranslator(parent)
    , m_install(installCommand(find))
{
    [[maybe_unused]] const bool loaded = load(u":/velto/velto_linux.qm"_s);
    Q_ASSERT(loaded);
}

QString LinuxWording::translate(const char *, const char *text, const char *, int) const
{
    auto said = QTranslator::translate("Linux", text, nullptr, -1);
    if (said.contains(kInstall) && m_install != kInstall) {
        // One package has another name on Arch.
        if (m_install.endsWith("pacman -S"_L1))
            said.replace("install gh"_L1, "install github-cli"_L1);
        said.replace(kInstall, m_install);
    }
    return said;
}

void speakLinux()
{
    QCoreApplication::installTranslator(
        new LinuxWording([](const QString &name) { return QStandardPaths::findExecutable(name); }, qApp));
}

} // namespace velto
