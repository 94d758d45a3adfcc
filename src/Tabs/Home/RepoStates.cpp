#include "Tabs/Home/RepoStates.h"

#include "Core/Process.h"
#include "Platform/ToolRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <chrono>
#include <set>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLimit{10};
constexpr std::size_t kMost = 200;

/// In the order of the code points.
struct ByCodePoint {
    bool operator()(const QString &a, const QString &b) const { return a.toUtf8() < b.toUtf8(); }
};
using Paths = std::set<QString, ByCodePoint>;

bool hasGit(const QString &path)
{
    return QFileInfo::exists(path + "/.git"_L1);
}

QStringList kids(const QString &path)
{
    QStringList result;
    for (const QString &name : QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Unsorted)) {
        if (!name.startsWith(u'.') && !name.startsWith(u'_'))
            result.append(path + u'/' + name);
    }
    return result;
}

// A repository at the second level is no barrier to the third.
void findBelow(const QString &folder, Paths &found)
{
    for (const QString &kid : kids(folder)) {
        if (hasGit(kid))
            found.insert(kid);
        for (const QString &grandKid : kids(kid)) {
            if (hasGit(grandKid))
                found.insert(grandKid);
        }
    }
}

/// "+3" or "-3" as 3; 0 for anything else.
int countIn(const QString &piece)
{
    return piece.mid(1).toInt();
}

} // namespace

QString RepoState::summary() const
{
    QStringList pieces;
    if (dirty > 0)
        pieces.append(QCoreApplication::translate("velto::RepoState", "%1 changed").arg(dirty));
    if (ahead > 0)
        pieces.append(QCoreApplication::translate("velto::RepoState", "%1 to push").arg(ahead));
    return pieces.join(u" · "_s);
}

QStringList findRepos(const QStringList &roots)
{
    Paths found;
    for (const QString &root : roots) {
        if (hasGit(root)) {
            found.insert(root);
            continue;
        }
        for (const QString &kid : kids(root)) {
            if (hasGit(kid))
                found.insert(kid);
            else
                findBelow(kid, found);
        }
    }
    QStringList result;
    for (const QString &path : found) {
        if (std::size_t(result.size()) == kMost)
            break;
        result.append(path);
    }
    return result;
}

RepoState parseStatus(const QByteArray &output, const QString &path)
{
    RepoState state{.name = lastPathComponent(path), .path = path};
    for (const QString &line : QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith("# branch.head "_L1)) {
            state.branch = line.sliced(14);
        } else if (line.startsWith("# branch.ab "_L1)) {
            const QStringList pieces = line.sliced(12).split(u' ', Qt::SkipEmptyParts);
            state.ahead = countIn(pieces.value(0));
            state.behind = countIn(pieces.value(1));
        } else if (!line.startsWith(u'#')) {
            ++state.dirty;
        }
    }
    return state;
}

QList<RepoState> repoStates(ToolRunner &tools, const QStringList &roots)
{
    QList<RepoState> states;
    for (const QString &path : findRepos(roots)) {
        const RunResult result =
            tools.run({u"git"_s, u"-C"_s, path, u"status"_s, u"--porcelain=v2"_s, u"--branch"_s}, {}, kLimit);
        if (result.ok)
            states.append(parseStatus(result.out, path));
    }
    return states;
}

} // namespace velto
