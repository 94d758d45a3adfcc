#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Applications.h"
#include "Platform/Clipboard.h"
#include "Platform/Defaults.h"
#include "Platform/FolderPanel.h"
#include "Platform/Keychain.h"
#include "Platform/LoginItem.h"
#include "Platform/Machine.h"
#include "Platform/MediaPlayers.h"
#include "Platform/Sounds.h"
#include "Platform/Terminals.h"
#include "Platform/VideoPlayer.h"
#include "Platform/Workspace.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QSet>
#include <utility>

// What stores need. Each fake keeps what it was told, and answers as a test sets it.

namespace velto {

class FakeDefaults final : public Defaults {
public:
    QHash<QString, QVariant> values;

    QVariant value(const QString &key) const override { return values.value(key); }
    void set(const QString &key, const QVariant &value) override { values.insert(key, value); }
    QString stays; ///< why nothing can be removed
    void clear(std::function<void(const QString &)> cleared) override
    {
        values.clear();
        cleared(stays);
    }
};

class FakeKeychain final : public Keychain {
public:
    QHash<QString, QString> entries;

    bool isLocked = false;
    bool keeps = true;
    int unlocked = 0; ///< how often the dialog was asked for

    void setLocked(bool on)
    {
        isLocked = on;
        Q_EMIT lockedChanged();
    }
    bool locked() const override { return isLocked; }
    void unlock() override { ++unlocked; }
    std::optional<QString> get(const QString &name) const override
    {
        if (isLocked)
            return std::nullopt;
        const auto found = entries.constFind(name);
        return found == entries.cend() ? std::nullopt : std::optional(*found);
    }
    bool put(const QString &name, const std::optional<QString> &value) override
    {
        if (!keeps)
            return false;
        entries.remove(name);
        if (value && !value->isEmpty())
            entries.insert(name, *value);
        return true;
    }
};

class FakeLoginItem final : public LoginItem {
public:
    bool on = false;
    bool allowed = true;

    bool enabled() const override { return on; }
    bool set(bool wanted) override { return on = wanted && allowed; }
    QString problem() const override
    {
        return allowed ? QString() : QStringLiteral("It can't be written: Read-only file system.");
    }
};

class FakeVideoPlayer final : public VideoPlayer {
    Q_OBJECT
public:
    bool here = true;
    QString htmlNow; ///< empty while nothing is shown
    QRect placeNow;

    bool installed() const override { return here; }
    void open(const QString &html, const QUrl &, quintptr, const QRect &place) override
    {
        htmlNow = html;
        placeNow = place;
    }
    void move(const QRect &place) override { placeNow = place; }
    void close() override { htmlNow.clear(); }
};

class FakeFolderPanel final : public FolderPanel {
public:
    QString promptNow;
    QStringList answer; ///< what the user will choose; nothing if they change their mind

    void choose(const QString &prompt, std::function<void(QStringList)> chosen) override
    {
        promptNow = prompt;
        if (!answer.isEmpty())
            chosen(answer);
    }
};

class FakeApplications final : public Applications {
    Q_OBJECT
public:
    QStringList runningNow;
    QString frontmostNow;

    QStringList running() const override { return runningNow; }
    QString frontmost() const override { return frontmostNow; }
    void setRunning(const QStringList &identifiers)
    {
        runningNow = identifiers;
        Q_EMIT runningChanged();
    }
};

class FakeAccessibility final : public Accessibility {
    Q_OBJECT
public:
    bool screenReader = false;
    bool stillness = false;
    QStringList announced;

    bool screenReaderOn() const override { return screenReader; }
    bool reducedMotion() const override { return stillness; }
    void announce(const QString &text) override { announced.append(text); }
    void setReducedMotion(bool on)
    {
        stillness = on;
        Q_EMIT changed();
    }
};

class FakeClipboard final : public Clipboard {
public:
    int count = 0;
    QString content; ///< null for something that is no text
    bool slow = false; ///< the program that holds it takes its time: until answer()
    std::function<void()> waiting; ///< its answer
    int reads = 0;

    mutable int looks = 0;

    int changeCount() const override
    {
        ++looks;
        return count;
    }
    QString text() const override { return content; }
    void read(int longest, QObject *context, std::function<void(std::optional<QString>)> done) override
    {
        ++reads;
        const bool fits = !content.isNull() && content.toUtf8().size() <= longest;
        waiting = [text = fits ? std::optional(content) : std::nullopt, alive = QPointer(context), done = std::move(done)] {
            if (alive)
                done(text);
        };
        if (!slow)
            answer();
    }
    void answer()
    {
        if (const auto now = std::exchange(waiting, {}))
            now();
    }
    void setText(const QString &text) override
    {
        content = text;
        ++count;
        copied();
    }
};

class FakeMediaPlayers final : public MediaPlayers {
    Q_OBJECT
public:
    struct Player {
        MediaPlayer player;
        std::optional<MediaReport> report; ///< nothing for one that fails
    };
    QList<Player> players;
    bool slow = false; ///< answers wait for answer()
    QStringList asked;
    QStringList pressed;

    QList<MediaPlayer> running() const override
    {
        QList<MediaPlayer> list;
        for (const Player &one : players)
            list.append(one.player);
        return list;
    }
    void ask(const QString &id, QObject *context, std::function<void(std::optional<MediaReport>)> done) override
    {
        asked.append(id);
        std::optional<MediaReport> report;
        for (const Player &one : players)
            if (one.player.id == id)
                report = one.report;
        m_waiting.append([report, alive = QPointer(context), done = std::move(done)] {
            if (alive)
                done(report);
        });
        if (!slow)
            answer();
    }
    void playPause(const QString &id) override { pressed.append(id); }
    /// Gives the answer that waits at this place.
    void answer(int index = 0) { m_waiting.takeAt(index)(); }
    int waiting() const { return int(m_waiting.size()); }

private:
    QList<std::function<void()>> m_waiting;
};

class FakeSounds final : public Sounds {
public:
    QStringList played;

    void play(const QString &name) override { played.append(name); }
};

class FakeWorkspace final : public Workspace {
public:
    QList<QUrl> opened;
    QStringList shown;

    bool open(const QUrl &url) override
    {
        opened.append(url);
        return true;
    }
    bool showInFileManager(const QString &path) override
    {
        shown.append(path);
        return true;
    }
};

class FakeTerminals final : public Terminals {
public:
    QSet<App> present;
    QList<std::pair<App, QString>> launched; ///< with the command line

    bool installed(App app) const override { return present.contains(app); }
    void launch(App app, const QString &commandLine) override { launched.append({app, commandLine}); }
};

class FakeMachine final : public Machine {
public:
    QString name = QStringLiteral("Desk");

    std::optional<PortHolder> holder;
    QSet<qint64> dead;
    mutable std::function<void()> holderEnds;

    QString displayName() const override { return name; }
    std::optional<PortHolder> holderOf(quint16 /*port*/) const override { return holder; }
    void giveBackMemory() const override { }
    bool lives(qint64 pid) const override { return !dead.contains(pid); }
    void whenEnded(qint64 /*pid*/, QObject * /*context*/, std::function<void()> ended) const override
    {
        holderEnds = std::move(ended);
    }
};

} // namespace velto
