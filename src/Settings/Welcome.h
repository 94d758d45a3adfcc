#pragma once

#include "Core/Prefs.h"
#include "Core/RowModel.h"

#include <QObject>
#include <QVariant>

namespace velto {

class AgentsSource;
class Background;
class HotKey;
class LoginItem;
class ToolRunner;
struct Places;

/// The first start: what is here, what the user wants, and the two permissions that matter. UI thread only.
class Welcome : public QObject {
    Q_OBJECT
    /// A list of {text, value}.
    Q_PROPERTY(QVariantList modes READ modes CONSTANT FINAL)
    Q_PROPERTY(int mode READ mode WRITE setMode NOTIFY changed FINAL)
    Q_PROPERTY(QString modeLine READ modeLine NOTIFY changed FINAL)
    /// module, label, note, on
    Q_PROPERTY(QAbstractItemModel *modules READ modules CONSTANT FINAL)
    Q_PROPERTY(bool login MEMBER m_login NOTIFY changed FINAL)
    Q_PROPERTY(bool hooks MEMBER m_hooks NOTIFY changed FINAL)
    /// The key that opens the panel from anywhere, or why there is none.
    Q_PROPERTY(QString keyHint READ keyHint NOTIFY changed FINAL)
    /// Claude Code is here, so its hooks can be offered.
    Q_PROPERTY(bool offersHooks READ offersHooks CONSTANT FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        AgentsSource &agents;
        Prefs &prefs;
        Background &background;
        ToolRunner &tools;
        LoginItem &loginItem;
        const HotKey &hotKey;
        const Places &places;
    };
    explicit Welcome(const Needs &needs, QObject *parent = nullptr);

    static QVariantList modes();
    int mode() const;
    void setMode(int mode);
    QString modeLine() const;
    QString keyHint() const;
    QAbstractItemModel *modules() { return &m_modules; }
    bool offersHooks() const { return m_claude; }

    /// By its raw value.
    Q_INVOKABLE void set(const QString &module, bool on);
    /// What connecting adds to Claude Code's settings.
    Q_INVOKABLE QString preview() const;
    /// Turns off what can't work here. Only before a welcome was ever finished. The scan for other tools comes in later.
    Q_INVOKABLE void detect();
    Q_INVOKABLE void finish();
    Q_INVOKABLE void seeQuestion() { Q_EMIT questionWanted(); }

Q_SIGNALS:
    void changed();
    /// The user wants to see what a question looks like: a stand-in for a session is to ask.
    void questionWanted();
    /// The user is through; the window may go.
    void done();

private:
    QString note(Prefs::Module module) const;
    void detected(bool otherTools);
    void update();

    Needs m_needs;
    bool m_claude;
    bool m_gh;
    bool m_login = true;
    bool m_hooks;
    RowModel m_modules;
};

} // namespace velto
