#include "Feeds/Repositories/RepoState.h"

#include <QDir>
#include <QFile>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace velto {

namespace {

namespace fs = std::filesystem;

/// Ordered by their bytes, which is the order of their characters.
using Paths = std::set<std::string>;

/// Of a worktree and a submodule it is a file.
bool hasGit(const fs::path &folder)
{
    std::error_code error;
    return fs::exists(folder / ".git", error);
}

/// The folders in a folder, those behind links too; none if it can't be listed. The kind of an entry mostly comes with the
/// listing, so a folder of many files costs no more than that.
std::vector<fs::path> kids(const fs::path &folder)
{
    std::vector<fs::path> result;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().native();
        std::error_code unknown;
        if (!name.starts_with('.') && !name.starts_with('_') && entry->is_directory(unknown))
            result.push_back(entry->path());
    }
    return result;
}

/// A repository is no barrier here: one that stands inside it is found as well.
void searchSecondLevel(const fs::path &folder, Paths &found)
{
    for (const fs::path &second : kids(folder)) {
        if (hasGit(second))
            found.insert(second.native());
        for (const fs::path &third : kids(second)) {
            if (hasGit(third))
                found.insert(third.native());
        }
    }
}

void search(const fs::path &root, Paths &found)
{
    if (hasGit(root)) {
        found.insert(root.native());
        return;
    }
    for (const fs::path &first : kids(root)) {
        if (hasGit(first))
            found.insert(first.native());
        else
            searchSecondLevel(first, found);
    }
}

std::string withoutLinks(const std::string &path)
{
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? path : real.native();
}

} // namespace

QStringList findRepos(const QStringList &roots)
{
    Paths found;
    for (const QString &root : roots) {
        if (root.isEmpty())
            continue;
        search(fs::path(QFile::encodeName(QDir::cleanPath(root)).toStdString()), found);
    }

    QStringList repos;
    Paths seen;
    for (const std::string &path : found) {
        const std::string real = withoutLinks(path);
        const bool isLinkToAnother = real != path && found.contains(real);
        if (!isLinkToAnother && seen.insert(real).second)
            repos.append(QFile::decodeName(path.c_str()));
    }
    return repos;
}

} // namespace velto
