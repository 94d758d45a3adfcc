#include "Hooks/HookInstaller.h"

#include "Hooks/Hooks.h"
#include "Platform/Clock.h"
#include "Platform/Files.h"

#include <QCoreApplication>
#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargest = 64 * 1024 * 1024;
constexpr int kPermissionTimeoutSeconds = 40;
/// A program that writes the file in place leaves it empty or cut short for a moment.
constexpr std::chrono::milliseconds kTornPause{10};

QByteArray marker()
{
    return QStringView(HookInstaller::kMarker).toUtf8();
}

/// The file's bytes; nothing if they can't be read or aren't text.
std::optional<QByteArray> text(const Files &files, const QString &path)
{
    constexpr int kAttempts = 5;
    for (int tried = 1;; ++tried) {
        const auto content = files.read(path, kLargest);
        const auto *bytes = std::get_if<QByteArray>(&content);
        if (!bytes)
            return std::nullopt;
        if (bytes->trimmed().endsWith('}') || tried == kAttempts)
            return bytes->isValidUtf8() ? std::optional(*bytes) : std::nullopt;
        std::this_thread::sleep_for(kTornPause);
    }
}

} // namespace

HookInstaller::HookInstaller(Files &files, const Clock &clock, const QString &home, const QString &token)
    : m_files(files)
    , m_clock(clock)
    , m_settings(home + "/.claude/settings.json"_L1)
    , m_token(token)
{
    const auto settings = text(m_files, m_settings);
    m_pastProxy = settings && settings->contains(marker()) && settings->contains(QStringView(kPastProxy).toUtf8());
}

QString HookInstaller::eventCommand(bool pastProxy) const
{
    return hookCommand(m_token, pastProxy);
}

std::optional<QString> HookInstaller::install()
{
    return edit(Change::Install);
}

std::optional<QString> HookInstaller::uninstall()
{
    m_files.sweep(m_settings);
    const auto problem = edit(Change::Uninstall);
    // A file without Velto's hooks needn't have been written.
    const auto current = m_files.read(m_settings, kLargest);
    const auto *bytes = std::get_if<QByteArray>(&current);
    const bool gone = bytes ? !bytes->contains(marker()) : std::get<FileError>(current).missing;
    return gone ? std::nullopt : problem;
}

std::vector<SettingsHook> HookInstaller::entries() const
{
    return {
        {"Stop", hookCommand(m_token, m_pastProxy).toUtf8(), std::nullopt},
        {"Notification", hookCommand(m_token, m_pastProxy).toUtf8(), std::nullopt},
        {"PermissionRequest", permissionCommand(m_token, m_pastProxy).toUtf8(), kPermissionTimeoutSeconds},
    };
}

std::optional<QString> HookInstaller::edit(Change change)
{
    // Claude Code and others write this file too, and none of them locks it.
    constexpr int kAttempts = 5;
    QString copy;
    QString problem;
    for (int tried = 1; tried <= kAttempts; ++tried) {
        switch (attempt(change, copy, problem)) {
        case Outcome::Done:
            return std::nullopt;
        case Outcome::Failed:
            return problem;
        case Outcome::Unreadable:
            if (tried == kAttempts)
                return problem;
            std::this_thread::sleep_for(kTornPause);
            break;
        case Outcome::Outpaced:
            break;
        }
    }
    return QCoreApplication::translate("HookInstaller",
                                       "Another program kept changing your Claude settings file, so Velto left it alone.");
}

HookInstaller::Outcome HookInstaller::attempt(Change change, QString &copy, QString &problem)
{
    const auto current = m_files.read(m_settings, kLargest);
    const auto *unread = std::get_if<FileError>(&current);
    // A file that exists but can't be read may hold anything; writing over it would lose that.
    if (unread && !unread->missing) {
        problem = unread->message;
        return Outcome::Failed;
    }
    const QByteArray old = unread ? QByteArray("{}\n") : std::get<QByteArray>(current);

    const SettingsText text =
        change == Change::Install ? withHooks(old, entries(), marker()) : withoutHooks(old, entries(), marker());
    if (const auto *reason = std::get_if<QString>(&text)) {
        problem = *reason;
        return Outcome::Unreadable;
    }
    if (!unread) {
        if (const auto reason = backUp(old, copy)) {
            problem = *reason;
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
    const auto error = m_files.replace(m_settings, std::get<QByteArray>(text), isUnchanged,
                                       change == Change::Install ? Files::Mode::Private : Files::Mode::Kept);
    if (!error)
        return Outcome::Done;
    problem = error->message;
    return outpaced ? Outcome::Outpaced : Outcome::Failed;
}

/// One copy for each edit: a retry replaces the copy of the attempt that was overtaken.
std::optional<QString> HookInstaller::backUp(const QByteArray &bytes, QString &copy)
{
    if (!copy.isEmpty()) {
        const auto failure = m_files.replace(copy, bytes);
        return failure ? std::optional(failure->message) : std::nullopt;
    }
    const auto kept = keepCopy(m_files, m_settings + ".velto-backup-"_L1, m_clock.wallTime(), bytes);
    if (const auto *error = std::get_if<FileError>(&kept))
        return error->message;
    copy = std::get<QString>(kept);
    return std::nullopt;
}

std::function<HookInstaller::Standing()> HookInstaller::reader() const
{
    return [&files = m_files, path = m_settings, token = m_token.toUtf8(), pastProxy = m_pastProxy] {
        const auto settings = text(files, path);
        if (!settings || !settings->contains(marker()))
            return Standing::Absent;
        // An older installation has hooks, but none for permission questions.
        const bool current = settings->contains(token) && settings->contains("/permission")
            && (!pastProxy || settings->contains(QStringView(kPastProxy).toUtf8()));
        return current ? Standing::Current : Standing::Outdated;
    };
}

QString HookInstaller::preview() const
{
    return u"\"hooks\": {\n"
           "  \"Stop\":              [{ \"hooks\": [{ \"type\": \"command\", \"command\": \"%1\" }] }],\n"
           "  \"Notification\":      [{ \"hooks\": [{ \"type\": \"command\", \"command\": \"%1\" }] }],\n"
           "  \"PermissionRequest\": [{ \"hooks\": [{ \"type\": \"command\", \"timeout\": 40, \"command\": \"%2\" }] }]\n"
           "}"_s.arg(hookCommand(m_token, m_pastProxy), permissionCommand(m_token, m_pastProxy));
}

} // namespace velto
