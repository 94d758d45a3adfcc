#pragma once

#include <QObject>
#include <QString>

namespace velto {

class Hub;

/// What the collapsed strip says: one fact on each side of the housing, or nothing at all. Follows the Hub. UI thread only.
class CollapsedStrip : public QObject {
    Q_OBJECT
    Q_PROPERTY(Left left READ left NOTIFY changed FINAL)
    Q_PROPERTY(Right right READ right NOTIFY changed FINAL)
    Q_PROPERTY(int running READ running NOTIFY changed FINAL)
    Q_PROPERTY(int waiting READ waiting NOTIFY changed FINAL)
    Q_PROPERTY(bool quiet READ quiet NOTIFY changed FINAL)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
    Q_PROPERTY(QString summarySymbol READ summarySymbol NOTIFY changed FINAL)
    Q_PROPERTY(QString summaryText READ summaryText NOTIFY changed FINAL)
    Q_PROPERTY(bool summaryUrgent READ summaryUrgent NOTIFY changed FINAL)
public:
    enum class Left : int { Nothing, Recording, Running };
    Q_ENUM(Left)
    enum class Right : int { Nothing, Waiting, Running };
    Q_ENUM(Right)

    explicit CollapsedStrip(const Hub &hub, QObject *parent = nullptr);

    Left left() const { return m_now.left; }
    Right right() const { return m_now.right; }
    /// Sessions that work, and sessions that wait for the user; 0 while the module is off.
    int running() const { return m_now.running; }
    int waiting() const { return m_now.waiting; }
    /// There is nothing to show: the strip is drawn no larger than the housing.
    bool quiet() const { return m_now.left == Left::Nothing && m_now.right == Right::Nothing; }
    /// The whole strip in one sentence, for a screen reader.
    QString spoken() const { return m_now.spoken; }

    /// The line under the strip while the pointer rests on it.
    QString summarySymbol() const { return m_now.summarySymbol; }
    QString summaryText() const { return m_now.summaryText; }
    bool summaryUrgent() const { return m_now.waiting > 0; }

Q_SIGNALS:
    /// Sent only when something of the above is different now.
    void changed();

private:
    struct Shown {
        Left left = Left::Nothing;
        Right right = Right::Nothing;
        int running = 0;
        int waiting = 0;
        QString spoken;
        QString summarySymbol;
        QString summaryText;
        bool operator==(const Shown &) const = default;
    };
    Shown read() const;
    void update();

    const Hub &m_hub;
    Shown m_now;
};

} // namespace velto
