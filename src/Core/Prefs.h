#pragma once

#include <QDateTime>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace velto {

class Clock;
class Defaults;
struct Places;

/// The user's choices. Every write is stored at once, and changed() follows once it has landed. A stored value that is
/// missing or of a wrong type reads as the default. Secrets never live here. UI thread only.
class Prefs : public QObject {
    Q_OBJECT
public:
    enum class OpenMode : quint8 { Hover, Click };
    Q_ENUM(OpenMode)
    enum class CalendarSource : quint8 { Manual, Google };
    Q_ENUM(CalendarSource)
    enum class Mode : quint8 { Engineer, Ai, Sales, All, Custom };
    Q_ENUM(Mode)
    enum class Module : quint8 { Agents, Todos, Calendar, Prs, Work, Media, Focus, Usage, Mcp, Repos };
    Q_ENUM(Module)

    Prefs(Defaults &defaults, const Places &places, const Clock &clock, QObject *parent = nullptr);

    /// Whether the user wants this module.
    bool isOn(Module module) const;
    bool anyOn() const;
    /// Turns one module on or off. Changing a single one always drops the preset.
    void set(Module module, bool on);
    /// Chooses a preset of modules; Custom leaves them as they are. Callers refresh the Hub right after.
    void selectMode(Mode mode) { selectMode(mode, {}); }
    /// The same, with these modules off whatever the preset says.
    void selectMode(Mode mode, const QList<Module> &without);

    OpenMode openMode() const { return m_openMode.value; }
    void setOpenMode(OpenMode value) { change(m_openMode, value); }
    Mode mode() const { return m_mode.value; }
    /// The raw values of the modules that are off.
    const QSet<QString> &off() const { return m_off.value; }
    const QStringList &repoRoots() const { return m_repoRoots.value; }
    void setRepoRoots(const QStringList &value);
    /// Whether the folders may be looked at: the user has chosen them, or finished the welcome that mentions them.
    bool mayLookAtRepos() const { return onboarded() || m_repoRootsChosen; }
    const QString &quillboxURL() const { return m_quillboxURL.value; }
    void setQuillboxURL(const QString &value) { change(m_quillboxURL, value); }
    const QString &jiraSite() const { return m_jiraSite.value; }
    void setJiraSite(const QString &value) { change(m_jiraSite, value); }
    const QString &jiraEmail() const { return m_jiraEmail.value; }
    void setJiraEmail(const QString &value) { change(m_jiraEmail, value); }
    /// Tokens per day; 0 for no budget.
    qint64 dailyBudget() const { return m_dailyBudget.value; }
    void setDailyBudget(qint64 value) { change(m_dailyBudget, value); }
    bool quietWhileRecording() const { return m_quietWhileRecording.value; }
    void setQuietWhileRecording(bool value) { change(m_quietWhileRecording, value); }
    bool peekOnFinish() const { return m_peekOnFinish.value; }
    void setPeekOnFinish(bool value) { change(m_peekOnFinish, value); }
    bool onboarded() const { return m_onboarded.value; }
    void setOnboarded(bool value) { change(m_onboarded, value); }
    const QString &meetingTitle() const { return m_meetingTitle.value; }
    void setMeetingTitle(const QString &value) { change(m_meetingTitle, value); }
    const QString &meetingURL() const { return m_meetingURL.value; }
    void setMeetingURL(const QString &value) { change(m_meetingURL, value); }
    const QDateTime &meetingStart() const { return m_meetingStart.value; }
    void setMeetingStart(const QDateTime &value) { change(m_meetingStart, value); }
    CalendarSource calendarSource() const { return m_calendarSource.value; }
    void setCalendarSource(CalendarSource value) { change(m_calendarSource, value); }
    const QStringList &googleCalendarIDs() const { return m_googleCalendarIDs.value; }
    void setGoogleCalendarIDs(const QStringList &value) { change(m_googleCalendarIDs, value); }
    const QString &dailyPriority() const { return m_dailyPriority.value; }
    void setDailyPriority(const QString &value) { change(m_dailyPriority, value); }
    const QSet<QString> &dismissedAgentIDs() const { return m_dismissedAgentIDs.value; }
    void setDismissedAgentIDs(const QSet<QString> &value) { change(m_dismissedAgentIDs, value); }
    bool glanceGuideDismissed() const { return m_glanceGuideDismissed.value; }
    void setGlanceGuideDismissed(bool value) { change(m_glanceGuideDismissed, value); }

    /// The usual folders for repositories that exist in this home folder.
    static QStringList defaultRepoRoots(const QString &home);

    static QString rawValue(Module module);
    static QString label(Module module);
    static QString detail(Module module);
    static QString title(Mode mode);

Q_SIGNALS:
    void changed();

private:
    /// One thing that the user chooses, and the key under which it is stored.
    template <typename T> struct Setting {
        QLatin1StringView key;
        T value;
    };
    template <typename T> Setting<T> read(QLatin1StringView key, const T &fallback = {}) const;
    template <typename T> void store(const Setting<T> &setting) { store(setting.key, rawOf(setting.value)); }
    template <typename T> void change(Setting<T> &setting, const T &value)
    {
        setting.value = value;
        store(setting);
        Q_EMIT changed();
    }
    void store(QLatin1StringView key, const QVariant &value);

    // As the defaults hold it.
    static QVariant rawOf(const QVariant &value) { return value; }
    static QVariant rawOf(const QSet<QString> &values);
    static QVariant rawOf(OpenMode value);
    static QVariant rawOf(Mode value);
    static QVariant rawOf(CalendarSource value);

    Defaults &m_defaults;
    Setting<OpenMode> m_openMode;
    Setting<Mode> m_mode;
    Setting<QSet<QString>> m_off;
    Setting<QStringList> m_repoRoots;
    bool m_repoRootsChosen;
    Setting<QString> m_quillboxURL;
    Setting<QString> m_jiraSite;
    Setting<QString> m_jiraEmail;
    Setting<qint64> m_dailyBudget;
    Setting<bool> m_quietWhileRecording;
    Setting<bool> m_peekOnFinish;
    Setting<bool> m_onboarded;
    Setting<QString> m_meetingTitle;
    Setting<QString> m_meetingURL;
    Setting<QDateTime> m_meetingStart;
    Setting<CalendarSource> m_calendarSource;
    Setting<QStringList> m_googleCalendarIDs;
    Setting<QString> m_dailyPriority;
    Setting<QSet<QString>> m_dismissedAgentIDs;
    Setting<bool> m_glanceGuideDismissed;
};

} // namespace velto
