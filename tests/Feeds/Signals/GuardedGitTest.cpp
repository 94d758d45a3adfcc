#include "Core/GuardedGit.h"
#include "Feeds/Signals/RepoTree.h"
#include "RunTests.h"

namespace velto {

/// What an unpacked archive can make git start, each with a trap that plain git walks into.
class GuardedGitTest : public QObject {
    Q_OBJECT

    /// Runs a shell script in a folder where it finds "first", a repository with a file for the filter "evil". $T is the trap,
    /// $OLD makes a file look changed.
    static void sh(RepoTree &tree, const QString &folder, const QByteArray &script)
    {
        const QByteArray help = "T=" + QFile::encodeName(tree.path(u"trap"_s))
            + "\nold() { touch -d 2001-01-01 \"$@\"; }\n"
              "mk() { mkdir -p $1; cd $1; git init -q; echo '*.x filter=evil' >.gitattributes; echo 1 >f.x; git add .; "
              "git commit -qm 1; cd - >/dev/null; }\n"
              // A partial clone that lacks its root tree, and would fetch it from $1.
              "partial() { git config core.repositoryformatversion 1; git config extensions.partialClone origin; "
              "git config remote.origin.url \"$1\"; git config protocol.allow always; "
              "rm -f .git/objects/$(git rev-parse HEAD: | sed 's,..,&/,'); }\n";
        tree.sh(folder, help + script);
    }
    static bool fired(const RepoTree &tree) { return QFile::remove(tree.path(u"fired"_s)); }

private Q_SLOTS:
    void init()
    {
        if (RepoTree::realGit().isEmpty())
            QSKIP("git isn't installed");
    }

    void startsNothingThatARepositoryNames()
    {
        RepoTree tree;
        tree.write(u"trap"_s,
                   "#!/bin/sh\ntouch " + QFile::encodeName(tree.path(u"fired"_s)) + "\n[ \"$1\" = clean ] && cat\nexit 1\n",
                   0700);
        enum After { Read, LeftOut };
        const auto row = [&tree](const char *name, After after, const QByteArray &trap) {
            const QString folder = u"r/"_s + QString::fromLatin1(name);
            sh(tree, folder, "mk .\n" + trap);
            const QString place = tree.path(u"linked"_s == QLatin1StringView(name) ? folder + u"/tree"_s : folder);
            tree.run({RepoTree::realGit(), u"-C"_s, place, u"status"_s, u"--porcelain=v2"_s, u"--branch"_s}, {},
                     std::chrono::seconds(30), {});
            QVERIFY2(fired(tree), name);
            const auto status = GuardedGit(tree).status(place);
            QVERIFY2(!fired(tree), name);
            QVERIFY2(status.has_value() == (after == Read), name);
        };
        row("fsmonitor", Read, "git config core.fsmonitor $T");
        row("include", Read, "echo \"[core] fsmonitor=$T\" >.git/x; git config include.path x");
        row("condition", Read, "echo \"[core] fsmonitor=$T\" >.git/x; git config includeIf.gitdir:/.path x");
        row("ofonetree", Read, "git config extensions.worktreeConfig true; echo \"[core] fsmonitor=$T\" >.git/config.worktree");
        row("linked", Read, "git config filter.evil.clean \"$T clean\"; git worktree add -q tree; old tree/f.x");
        row("clean", Read, "git config filter.evil.clean \"$T clean\"; old f.x");
        row("process", Read, "git config filter.evil.process $T; git config filter.evil.required true; old f.x");
        row("oddname", Read,
            "echo '*.x filter=a.\"b\\' >.gitattributes; git config 'filter.a.\"b\\.clean' \"$T clean\"; old f.x");
        row("hook", Read, "cp $T .git/hooks/post-index-change; old f.x");
        row("hookspath", Read, "mkdir h; cp $T h/post-index-change; git config core.hooksPath h; old f.x");
        row("submodule", Read,
            "mk ../lib1; git submodule -q add $PWD/../lib1 lib; git -C lib config filter.evil.clean \"$T clean\"; old lib/f.x");
        row("deeper", Read,
            "mk ../lib2; mk ../mid2; cd ../mid2; git submodule -q add $PWD/../lib2 lib; git commit -qm 2; cd -\n"
            "git submodule -q add $PWD/../mid2 mid; git submodule -q update --init --recursive\n"
            "git -C mid/lib config filter.evil.process $T; old mid/lib/f.x");
        row("embedded", Read,
            "mk lib; git add lib 2>/dev/null; git commit -qm 2; git -C lib config core.fsmonitor $T; "
            "git -C lib config filter.evil.clean \"$T clean\"; old lib/f.x");
        row("helper", LeftOut, "partial \"ext::$T\"");
        row("ssh", LeftOut, "partial ssh://x/y; git config core.sshCommand $T");
        row("proxy", LeftOut, "partial git://x/y; git config core.gitProxy $T");
        row("upload", LeftOut, "partial $PWD/../clean; git config remote.origin.uploadpack $T");
        row("bare", LeftOut,
            "cp -r .git/. .; rm -rf .git/*; export GIT_DIR=.; git config core.worktree ../clean; git config core.fsmonitor $T");
    }

    void keepsTheUsersOwnFilterAndTheIndex()
    {
        RepoTree tree;
        tree.write(u"own"_s, "#!/bin/sh\ntouch " + QFile::encodeName(tree.path(u"fired"_s)) + "\ncat\n", 0700);
        sh(tree, u"r"_s, "mk .; git config filter.evil.clean false; git config filter.evil.required true; old f.x");
        tree.write(u"gitconfig"_s, "[filter \"evil\"]\n\tclean = " + QFile::encodeName(tree.path(u"own"_s)) + '\n');
        const QString index = tree.path(u"r/.git/index"_s);
        const QByteArray before = readFile(index);
        QCOMPARE(GuardedGit(tree).status(tree.path(u"r"_s)).value_or(""_ba).count("\n1 "), 0);
        QVERIFY(fired(tree));
        QCOMPARE(readFile(index), before);
        QVERIFY(!QFile::exists(tree.path(u"r/.git/index.lock"_s)));
    }

    void looksNowhereElse()
    {
        RepoTree tree;
        sh(tree, u"r"_s, "mk .; mkdir -p inside/.git; mk other; cd other; git config core.worktree /");
        QVERIFY(GuardedGit(tree).status(tree.path(u"r"_s)));
        QVERIFY(!GuardedGit(tree).status(tree.path(u"r/inside"_s)));
        QVERIFY(!GuardedGit(tree).status(tree.path(u"r/other"_s)));
    }
};

const Registered<GuardedGitTest> registered;

} // namespace velto

#include "GuardedGitTest.moc"
