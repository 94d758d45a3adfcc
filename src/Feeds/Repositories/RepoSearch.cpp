#include "Feeds/Repositories/RepoSearch.h"

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

/// Sorted by bytes, which in UTF-8 is the order of code points.
using Paths = std::set<std::string>;

/// A worktree's and a submodule's .git is a file.
bool hasGit(const fs::path &folder)
{
    std::error_code error;
    return fs::exists(folder / ".git", error);
}

/// The folders in a folder, through links too; empty if it can't be listed. The type of an entry mostly comes with the listing,
/// so many files cost nothing more.
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

class Search {
public:
    explicit Search(const EnterFolder &enter)
        : m_enter(enter)
    {
    }

    void root(const fs::path &root)
    {
        if (add(root))
            return;
        for (const fs::path &first : kidsOf(root)) {
            if (!add(first))
                secondLevel(first);
        }
    }
    const Paths &found() const { return m_found; }

private:
    bool enters(const fs::path &folder) const { return !m_enter || m_enter(QFile::decodeName(folder.c_str())); }
    std::vector<fs::path> kidsOf(const fs::path &folder) const { return enters(folder) ? kids(folder) : std::vector<fs::path>(); }
    bool add(const fs::path &folder)
    {
        const bool isRepo = enters(folder) && hasGit(folder);
        if (isRepo)
            m_found.insert(folder.native());
        return isRepo;
    }
    /// The search doesn't stop at a repository here: one nested inside it is found as well.
    void secondLevel(const fs::path &folder)
    {
        for (const fs::path &second : kidsOf(folder)) {
            add(second);
            for (const fs::path &third : kidsOf(second))
                add(third);
        }
    }

    const EnterFolder &m_enter;
    Paths m_found;
};

std::string withoutLinks(const std::string &path)
{
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? path : real.native();
}

} // namespace

QStringList findRepos(const QStringList &roots, const EnterFolder &enter)
{
    Search search(enter);
    for (const QString &root : roots) {
        if (root.isEmpty())
            continue;
        search.root(fs::path(QFile::encodeName(QDir::cleanPath(root)).toStdString()));
    }
    const Paths &found = search.found();

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
