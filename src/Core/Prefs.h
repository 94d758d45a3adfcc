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

/// What the user has chosen. Every write is stored at once, and announces changed() after it has landed. A stored value that is
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
    /// Turns one module on or off. Touching a single one always drops the preset.
    void set(Module module, bool on);
    /// Chooses a preset of modules; Custom leaves them as they are. Callers refresh the Hub right after.
    void selectMode(Mode mode) { selectMode(mode, {}); }
    /// The same, with these modules off whatever the preset says.
    void selectMode(Mode mode, const QList<Module> &without);

    OpenMode openMode() const { return m_openMode; }
    void setOpenMode(OpenMode value);
    Mode mode() const { return m_mode; }
    /// Seconds. Read at the start and kept; nothing acts on it.
    double hoverDelay() const { return m_hoverDelay; }
    /// The raw values of the modules that are off.
    const QSet<QString> &off() const { return m_off; }
    const QStringList &repoRoots() const { return m_repoRoots; }
    void setRepoRoots(const QStringList &value);
    /// Whether the folders may be looked at: the user has chosen them, or finished the welcome that tells of them.
    bool mayLookAtRepos() const { return m_onboarded || m_repoRootsChosen; }
    const QString &quillboxURL() const { return m_quillboxURL; }
    void setQuillboxURL(const QString &value);
    const QString &jiraSite() const { return m_jiraSite; }
    void setJiraSite(const QString &value);
    const QString &jiraEmail() const { return m_jiraEmail; }
    void setJiraEmail(const QString &value);
    /// Tokens a day; 0 is no budget.
    qint64 dailyBudget() const { return m_dailyBudget; }
    void setDailyBudget(qint64 value);
    bool quietWhileRecording() const { return m_quietWhileRecording; }
    void setQuietWhileRecording(bool value);
    bool peekOnFinish() const { return m_peekOnFinish; }
    void setPeekOnFinish(bool value);
    bool onboarded() const { return m_onboarded; }
    void setOnboarded(bool value);
    /// Read at the start and kept; nothing acts on it.
    const QStringList &calendarIDs() const { return m_calendarIDs; }
    const QString &meetingTitle() const { return m_meetingTitle; }
    void setMeetingTitle(const QString &value);
    const QString &meetingURL() const { return m_meetingURL; }
    void setMeetingURL(const QString &value);
    const QDateTime &meetingStart() const { return m_meetingStart; }
    void setMeetingStart(const QDateTime &value);
    CalendarSource calendarSource() const { return m_calendarSource; }
    void setCalendarSource(CalendarSource value);
    const QStringList &googleCalendarIDs() const { return m_googleCalendarIDs; }
    void setGoogleCalendarIDs(const QStringList &value);
    const QString &dailyPriority() const { return m_dailyPriority; }
    void setDailyPriority(const QString &value);
    const QSet<QString> &dismissedAgentIDs() const { return m_dismissedAgentIDs; }
    void setDismissedAgentIDs(const QSet<QString> &value);
    bool glanceGuideDismissed() const { return m_glanceGuideDismissed; }
    void setGlanceGuideDismissed(bool value);

    /// The usual folders for repositories that exist in this home folder.
    static QStringList defaultRepoRoots(const QString &home);

    static QString rawValue(Module module);
    static QString label(Module module);
    static QString detail(Module module);
    static QString title(Mode mode);

Q_SIGNALS:
    void changed();

private:
    void store(QLatin1StringView key, const QVariant &value);
    template <typename T> void write(QLatin1StringView key, T &field, const T &value, const QVariant &raw);

    Defaults &m_defaults;
    OpenMode m_openMode;
    Mode m_mode;
    double m_hoverDelay;
    QSet<QString> m_off;
    QStringList m_repoRoots;
    bool m_repoRootsChosen;
    QString m_quillboxURL;
    QString m_jiraSite;
    QString m_jiraEmail;
    qint64 m_dailyBudget;
    bool m_quietWhileRecording;
    bool m_peekOnFinish;
    bool m_onboarded;
    QStringList m_calendarIDs;
    QString m_meetingTitle;
    QString m_meetingURL;
    QDateTime m_meetingStart;
    CalendarSource m_calendarSource;
    QStringList m_googleCalendarIDs;
    QString m_dailyPriority;
    QSet<QString> m_dismissedAgentIDs;
    bool m_glanceGuideDismissed;
};

} // namespace velto
