#pragma once

#include "Core/Result.h"
#include "Core/RowModel.h"
#include "Core/SourceState.h"
#include "Core/VeltoSource.h"
#include "Platform/Timer.h"
#include "Tabs/Quillbox/QuillboxMode.h"
#include "Tabs/Quillbox/VeltoSnapshot.h"

#include <QMap>
#include <QSet>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Clock;
class QuillboxClient;
class Machine;
struct HubError;

/// The connection to the user's memory: which one there is, what the hub last said, and what of it was news. Lives on the UI
/// thread, never blocks it. There is one fetch under way at most, and none within ten seconds of the last; an answer that
/// arrives after the connection has changed is dropped.
class QuillboxSource : public VeltoSource {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState state READ state NOTIFY changed FINAL)
    Q_PROPERTY(bool failed READ isFailed NOTIFY changed FINAL)
    Q_PROPERTY(bool local READ isLocal NOTIFY changed FINAL)
    Q_PROPERTY(QString modeLabel READ modeLabel NOTIFY changed FINAL)
    /// "Saved today: …"; empty if nothing was.
    Q_PROPERTY(QString savedToday READ savedToday NOTIFY changed FINAL)
    Q_PROPERTY(bool hasCard READ hasCard NOTIFY changed FINAL)
    Q_PROPERTY(QString cardArea READ cardArea NOTIFY changed FINAL)
    Q_PROPERTY(QString cardQuestion READ cardQuestion NOTIFY changed FINAL)
    /// The card's answer, while it is open; empty otherwise.
    Q_PROPERTY(QString cardAnswer READ cardAnswer NOTIFY changed FINAL)
    Q_PROPERTY(bool offersAnswer READ offersAnswer NOTIFY changed FINAL)
    /// The sessions, and then what was heard: rowId, section (its heading), symbol, heard, name, age, spoken.
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT FINAL)
    /// There is neither a card nor a row.
    Q_PROPERTY(bool empty READ isEmpty NOTIFY changed FINAL)
public:
    /// What the source uses; all of it outlives the source.
    struct Needs {
        Clock &clock;
        const Machine &machine;
        QuillboxClient &client;
        QString home; ///< the user's home folder
    };
    explicit QuillboxSource(Needs needs, QObject *parent = nullptr);

    QString title() const override;
    QString symbol() const override;
    int badge() const override;
    QUrl makeView() const override;

    const QuillboxMode &mode() const { return m_mode; }
    /// The last good one; empty before the first.
    const VeltoSnapshot &snapshot() const { return m_snapshot; }
    SourceState state() const { return m_state; }
    bool showGrip() const { return m_showGrip; }
    QuillboxClient &client() const { return m_needs.client; }

    bool isFailed() const { return m_state.kind() == SourceState::Kind::Failed; }
    bool isLocal() const { return m_mode.isLocal(); }
    QString modeLabel() const { return m_mode.label(m_needs.home); }
    QString savedToday() const;
    bool hasCard() const { return m_snapshot.gap.has_value(); }
    QString cardArea() const;
    QString cardQuestion() const;
    QString cardAnswer() const;
    bool offersAnswer() const;
    QAbstractItemModel *rows() { return &m_rows; }
    /// The rows of otherMac(), for the tab of the agents: rowId, name, age, spoken.
    QAbstractItemModel *otherMacRows() { return &m_otherMacRows; }
    bool isEmpty() const { return !m_snapshot.gap && m_snapshot.handoffs.isEmpty() && m_snapshot.heard.isEmpty(); }

    /// The sessions of other machines, in the hub's order.
    QList<VeltoSnapshot::Handoff> otherMac() const;

    void refresh();
    /// Asks again without the wait between two fetches: after a write, and for a retry by hand. While a fetch is under way
    /// nothing more is asked.
    Q_INVOKABLE void fetchAgain();
    /// Forgets everything and starts again with the connection that is selected now.
    void reconnect();
    /// Reveals the card's answer for good.
    Q_INVOKABLE void openAnswer();

Q_SIGNALS:
    /// snapshot() was set, perhaps to what it was before.
    void snapshotTaken();

private:
    struct Published {
        QuillboxMode mode;
        VeltoSnapshot snapshot;
        SourceState state;
        bool showGrip = false;
        bool operator==(const Published &) const = default;
    };

    /// Outlives the source if need be.
    QCoro::Task<> fetch();
    void take(const Result<VeltoSnapshot, HubError> &answer);
    void diff(const VeltoSnapshot &next);
    void heardPeek(const VeltoSnapshot &next);
    void handoffPeek(const VeltoSnapshot &next);
    void publish();
    void publishRows();
    QString hostSlug() const;
    /// Empty if `at` can't be read.
    QString ageOf(const QString &at, QString (*words)(const QDateTime &, const QDateTime &)) const;

    Needs m_needs;
    QuillboxMode m_mode;
    VeltoSnapshot m_snapshot;
    SourceState m_state = SourceState::loading();
    bool m_showGrip = false;
    /// The ids of what was heard, and the times of the sessions, in the last snapshot; nothing before the first.
    std::optional<QSet<qint64>> m_seenHeard;
    std::optional<QMap<qint64, QString>> m_seenHandoffs;
    /// When the last fetch ended, well or badly.
    std::optional<Instant> m_lastFetch;
    bool m_fetching = false;
    int m_connection = 0; ///< counts the reconnects
    Published m_published;
    RowModel m_rows;
    RowModel m_otherMacRows;
};

} // namespace velto
