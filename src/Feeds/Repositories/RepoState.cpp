#include "Feeds/Repositories/RepoState.h"

#include "Core/GuardedGit.h"
#include "Core/Texts.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qsizetype kMaximumRepos = 200;
constexpr QByteArrayView kHead("# branch.head ");
constexpr QByteArrayView kAheadBehind("# branch.ab ");

/// Takes what precedes the next `separator`, and the separator with it.
QByteArrayView takeUntil(char separator, QByteArrayView &text)
{
    const qsizetype end = text.indexOf(separator);
    const QByteArrayView piece = end < 0 ? text : text.first(end);
    text = end < 0 ? QByteArrayView() : text.sliced(end + 1);
    return piece;
}

QByteArrayView takeWord(QByteArrayView &text)
{
    QByteArrayView word;
    while (word.isEmpty() && !text.isEmpty())
        word = takeUntil(' ', text);
    return word;
}

/// The number after the sign of "+3" or "-2"; 0 where git knows none and prints "+?".
qint64 takeCount(QByteArrayView &text)
{
    const QByteArrayView word = takeWord(text);
    return word.isEmpty() ? 0 : word.sliced(1).toLongLong();
}

} // namespace

QString RepoState::summary() const
{
    QStringList parts;
    if (dirty > 0)
        parts.append(QCoreApplication::translate("RepoState", "%1 changed").arg(dirty));
    if (ahead > 0)
        parts.append(QCoreApplication::translate("RepoState", "%1 to push").arg(ahead));
    return parts.join(u" · "_s);
}

RepoState parseStatus(const QString &path, QByteArrayView output)
{
    RepoState repo;
    repo.name = lastPathComponent(path);
    repo.path = path;
    while (!output.isEmpty()) {
        const QByteArrayView line = takeUntil('\n', output);
        if (line.isEmpty())
            continue;
        if (line.startsWith(kHead)) {
            repo.branch = QString::fromUtf8(line.sliced(kHead.size()));
        } else if (line.startsWith(kAheadBehind)) {
            QByteArrayView counts = line.sliced(kAheadBehind.size());
            repo.ahead = takeCount(counts);
            repo.behind = takeCount(counts);
        } else if (line.front() != '#') {
            ++repo.dirty;
        }
    }
    return repo;
}

QList<RepoState> repoStates(ToolRunner &tools, const QStringList &roots, const EnterFolder &enter)
{
    QList<RepoState> states;
    for (const QString &path : findRepos(roots, enter).mid(0, kMaximumRepos)) {
        if (enter && !enter(path))
            continue;
        if (const auto status = GuardedGit(tools).status(path))
            states.append(parseStatus(path, *status));
    }
    return states;
}

} // namespace velto
