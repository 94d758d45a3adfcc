#include "Core/GuardedGit.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLimit{10};
constexpr int kMaximumRepos = 500; // including nested submodules
constexpr QByteArrayView kSubmoduleMode("160000 ");

using Pairs = std::map<QByteArray, QByteArray>;

/// Settings that switch off what git might start while it works out a status. Submodules inherit them.
constexpr std::array<std::pair<const char *, const char *>, 13> kSwitchedOff{{
    {"core.fsmonitor", "false"},
    {"core.hooksPath", "/dev/null"},
    {"core.virtualFilesystem", ""}, // Microsoft's git
    {"core.alternateRefsCommand", ""},
    {"core.askPass", ""},
    {"core.gitProxy", ""},
    {"core.sshCommand", "false"},
    {"credential.helper", ""},
    {"diff.external", ""},
    {"pager.status", "false"},
    {"protocol.allow", "never"},
    {"status.submoduleSummary", "false"},
    {"maintenance.auto", "false"},
}};

/// Groups of settings that name programs, for git or for a filter, under names that anyone may choose.
constexpr std::array<QByteArrayView, 3> kNamedPrograms{"filter.", "hook.", "lfs.extension."};

/// Passes the pairs in git's numbered variables, after those that the user's own environment has.
void addConfiguration(ToolEnvironment &environment, const Pairs &pairs)
{
    constexpr auto kCount = "GIT_CONFIG_COUNT";
    int count = std::max(0, qEnvironmentVariableIntValue(kCount));
    for (const auto &[key, value] : pairs) {
        const QByteArray number = QByteArray::number(count++);
        environment.append({"GIT_CONFIG_KEY_" + number, key});
        environment.append({"GIT_CONFIG_VALUE_" + number, value});
    }
    environment.append({kCount, QByteArray::number(count)});
}

/// The variables of guardedGit(), with more settings to override.
ToolEnvironment guarded(const Pairs &overrides)
{
    ToolEnvironment environment{
        // Takes no lock that the user's own commands would meet; so no index is written, and no hook runs for it.
        {"GIT_OPTIONAL_LOCKS"_ba, "0"_ba},
        {"GIT_TERMINAL_PROMPT"_ba, "0"_ba},
        {"GIT_ASKPASS"_ba, "false"_ba},
        {"SSH_ASKPASS"_ba, "false"_ba},
        {"GIT_EDITOR"_ba, ":"_ba},
        {"GIT_SEQUENCE_EDITOR"_ba, ":"_ba},
        {"GIT_PAGER"_ba, "cat"_ba},
        {"GIT_EXTERNAL_DIFF"_ba, std::nullopt},
        // What a partial clone lacks isn't fetched; a git too old for this variable is left without a way to fetch.
        {"GIT_NO_LAZY_FETCH"_ba, "1"_ba},
        {"GIT_ALLOW_PROTOCOL"_ba, "none"_ba},
        {"GIT_SSH_COMMAND"_ba, "false"_ba},
    };
    Pairs pairs(kSwitchedOff.begin(), kSwitchedOff.end());
    pairs.insert(overrides.begin(), overrides.end());
    addConfiguration(environment, pairs);
    return environment;
}

QByteArrayView takeRecord(QByteArrayView &text)
{
    const qsizetype end = text.indexOf('\0');
    const QByteArrayView record = end < 0 ? text : text.first(end);
    text = end < 0 ? QByteArrayView() : text.sliced(end + 1);
    return record;
}

bool isUsersOwn(QByteArrayView scope)
{
    return scope == "system" || scope == "global" || scope == "command";
}

/// A value that starts no program and makes nothing depend on one.
QByteArray neutral(const QByteArray &key)
{
    return key.endsWith(".required") || key.endsWith(".enabled") ? "false"_ba : ""_ba;
}

/// The folder names of the submodules in a listing of `git ls-files --stage -z`.
QStringList submodulesOf(QByteArrayView listing)
{
    QStringList result;
    while (!listing.isEmpty()) {
        const QByteArrayView entry = takeRecord(listing);
        const qsizetype name = entry.indexOf('\t') + 1;
        if (entry.startsWith(kSubmoduleMode) && name > 0)
            result.append(QFile::decodeName(entry.sliced(name).toByteArray()));
    }
    return result;
}

} // namespace

ToolEnvironment guardedGit()
{
    return guarded({});
}

GuardedGit::GuardedGit(ToolRunner &tools)
    : m_tools(tools)
{
}

std::optional<QByteArray> GuardedGit::status(const QString &path)
{
    // A folder whose .git isn't a repository doesn't belong to a repository above it.
    const QString place = QFileInfo(path).canonicalFilePath();
    m_overrides.clear();
    m_vetted = 0;
    m_place = {{"GIT_CEILING_DIRECTORIES"_ba, QFile::encodeName(QFileInfo(place).path())}};
    for (const char *name : {"GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE", "GIT_COMMON_DIR", "GIT_OBJECT_DIRECTORY",
                             "GIT_ALTERNATE_OBJECT_DIRECTORIES", "GIT_NAMESPACE", "GIT_PREFIX", "GIT_CONFIG"})
        m_place.append({name, std::nullopt}); // Velto may have been started inside a repository
    if (!vet(path, false))
        return std::nullopt;
    return ask(path, {u"status"_s, u"--porcelain=v2"_s, u"--branch"_s});
}

bool GuardedGit::vet(const QString &folder, bool submodule)
{
    if (++m_vetted > kMaximumRepos)
        return false;
    const auto listing = ask(folder, {u"config"_s, u"--list"_s, u"--show-scope"_s, u"--null"_s});
    const auto settings = listing ? parse(*listing) : std::nullopt;
    if (!settings)
        return false;
    m_overrides.insert(settings->overrides.begin(), settings->overrides.end());

    const auto files = ask(folder, {u"ls-files"_s, u"--stage"_s, u"--full-name"_s, u"-z"_s, u"--"_s, u":/"_s});
    if (!files)
        return false;
    const QStringList submodules = submodulesOf(*files);
    QString top = folder;
    const bool ceilingFails = folder.contains(u':'); // a colon separates ceilings
    if (settings->namesWorkTree || (!submodule && ceilingFails)) {
        const auto told = ask(folder, {u"rev-parse"_s, u"--show-toplevel"_s});
        if (!told || !told->endsWith('\n'))
            return false;
        top = QFile::decodeName(told->chopped(1));
        // The work tree is elsewhere, such as the whole disk.
        if (QFileInfo(top).canonicalFilePath() != QFileInfo(folder).canonicalFilePath())
            return false;
    }
    return std::ranges::all_of(submodules, [&](const QString &each) {
        const QString inside = top + u'/' + each;
        return !QFileInfo::exists(inside + "/.git"_L1) || vet(inside, true);
    });
}

std::optional<GuardedGit::Settings> GuardedGit::parse(QByteArrayView listing)
{
    Settings settings;
    Pairs ofTheUser;
    std::vector<QByteArray> ofTheRepo;
    while (!listing.isEmpty()) {
        const QByteArrayView scope = takeRecord(listing);
        const QByteArrayView entry = takeRecord(listing);
        const qsizetype line = entry.indexOf('\n');
        const QByteArray key = (line < 0 ? entry : entry.first(line)).toByteArray();
        if (scope.isEmpty() || key.isEmpty())
            return std::nullopt;
        if (isUsersOwn(scope)) {
            ofTheUser[key] = line < 0 ? "true"_ba : entry.sliced(line + 1).toByteArray();
            continue;
        }
        settings.namesWorkTree = settings.namesWorkTree || key == "core.worktree";
        if (std::ranges::any_of(kNamedPrograms, [&key](QByteArrayView start) { return key.startsWith(start); }))
            ofTheRepo.push_back(key);
    }
    for (const QByteArray &key : ofTheRepo) {
        const auto own = ofTheUser.find(key);
        settings.overrides[key] = own == ofTheUser.end() ? neutral(key) : own->second;
        if (key.startsWith("hook."))
            settings.overrides[key.first(key.lastIndexOf('.')) + ".enabled"] = "false";
    }
    return settings;
}

std::optional<QByteArray> GuardedGit::ask(const QString &folder, const QStringList &words) const
{
    const RunResult result =
        m_tools.run(QStringList{u"git"_s, u"-C"_s, folder} + words, {}, kLimit, guarded(m_overrides) + m_place);
    return result.ok ? std::optional(result.out) : std::nullopt;
}

} // namespace velto
