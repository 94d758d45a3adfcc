#include "Hooks/HookInstaller.h"

#include "Hooks/Hooks.h"
#include "Platform/Clock.h"
#include "Platform/Files.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargest = 64 * 1024 * 1024;
constexpr int kPermissionTimeoutSeconds = 40;

QByteArray marker()
{
    return QStringView(HookInstaller::kMarker).toUtf8();
}

} // namespace

HookInstaller::HookInstaller(Files &files, const Clock &clock, const QString &home, const QString &token)
    : m_files(files)
    , m_clock(clock)
    , m_settings(home + "/.claude/settings.json"_L1)
    , m_token(token)
{
}

std::optional<QString> HookInstaller::install()
{
    return edit(Change::Install);
}

std::optional<QString> HookInstaller::uninstall()
{
    m_files.sweep(m_settings);
    return edit(Change::Uninstall);
}

std::vector<SettingsHook> HookInstaller::entries() const
{
    return {
        {"Stop", hookCommand(m_token).toUtf8(), std::nullopt},
        {"Notification", hookCommand(m_token).toUtf8(), std::nullopt},
        {"PermissionRequest", permissionCommand(m_token).toUtf8(), kPermissionTimeoutSeconds},
    };
}

std::optional<QString> HookInstaller::edit(Change change)
{
    // Claude Code and others write this file too, and nobody locks it.
    constexpr int kAttempts = 5;
    QString problem;
    for (int tried = 0; tried < kAttempts; ++tried) {
        switch (attempt(change, problem)) {
        case Outcome::Done:
            return std::nullopt;
        case Outcome::Failed:
            return problem;
        case Outcome::Outpaced:
            break;
        }
    }
    return QCoreApplication::translate("HookInstaller",
                                       "Another program kept changing your Claude settings file, so Velto left it alone.");
}

HookInstaller::Outcome HookInstaller::attempt(Change change, QString &problem)
{
    const auto current = m_files.read(m_settings, kLargest);
    const auto *unread = std::get_if<FileError>(&current);
    // A file that is there but can't be read may hold anything: writing over it would lose that.
    if (unread && !unread->missing) {
        problem = unread->message;
        return Outcome::Failed;
    }
    const QByteArray old = unread ? QByteArray("{}\n") : std::get<QByteArray>(current);

    const SettingsText text =
        change == Change::Install ? withHooks(old, entries(), marker()) : withoutHooks(old, entries(), marker());
    if (const auto *reason = std::get_if<QString>(&text)) {
        problem = *reason;
        return Outcome::Failed;
    }
    if (!unread) {
        const auto copy = keepCopy(m_files, m_settings + ".velto-backup-"_L1, m_clock.wallTime(), old);
        if (const auto *error = std::get_if<FileError>(&copy)) {
            problem = error->message;
            return Outcome::Failed;
        }
    }

    bool outpaced = false;
    const auto isUnchanged = [&] {
        const auto now = m_files.read(m_settings, kLargest);
        const auto *gone = std::get_if<FileError>(&now);
        outpaced = gone ? !(unread && gone->missing) : unread || std::get<QByteArray>(now) != old;
        return !outpaced;
    };
    const auto error = m_files.replace(m_settings, std::get<QByteArray>(text), isUnchanged);
    if (!error)
        return Outcome::Done;
    problem = error->message;
    return outpaced ? Outcome::Outpaced : Outcome::Failed;
}

std::optional<QByteArray> HookInstaller::text() const
{
    const auto content = m_files.read(m_settings, kLargest);
    const auto *bytes = std::get_if<QByteArray>(&content);
    if (!bytes || !bytes->isValidUtf8())
        return std::nullopt;
    return *bytes;
}

bool HookInstaller::present() const
{
    const auto settings = text();
    return settings && settings->contains(marker());
}

bool HookInstaller::needsUpgrade() const
{
    const auto settings = text();
    if (!settings || !settings->contains(marker()))
        return false;
    // Before permission questions there was no such path.
    return !settings->contains(m_token.toUtf8()) || !settings->contains("/permission");
}

QString HookInstaller::preview() const
{
    return u"\"hooks\": {\n"
           "  \"Stop\":              [{ \"hooks\": [{ \"type\": \"command\", \"command\": \"%1\" }] }],\n"
           "  \"Notification\":      [{ \"hooks\": [{ \"type\": \"command\", \"command\": \"%1\" }] }],\n"
           "  \"PermissionRequest\": [{ \"hooks\": [{ \"type\": \"command\", \"timeout\": 40, \"command\": \"%2\" }] }]\n"
           "}"_s.arg(hookCommand(m_token), permissionCommand(m_token));
}

} // namespace velto
