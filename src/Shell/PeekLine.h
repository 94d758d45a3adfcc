#pragma once

#include "Core/Peek.h"

#include <QObject>
#include <QString>

namespace velto {

class AgentsSource;
class Hub;

/// The row under the strip: the Peek on show, or the last one while it is on its way out. UI thread only.
class PeekLine : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool onShow READ onShow NOTIFY changed FINAL)
    Q_PROPERTY(int serial READ serial NOTIFY changed FINAL)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed FINAL)
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    Q_PROPERTY(Tone tone READ tone NOTIFY changed FINAL)
    Q_PROPERTY(bool isQuestion READ isQuestion NOTIFY changed FINAL)
    Q_PROPERTY(QString actionLabel READ actionLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString hint READ hint NOTIFY changed FINAL)
    Q_PROPERTY(QString waiting READ waiting NOTIFY waitingChanged FINAL)
public:
    enum class Tone : int { Good, Warn, Bad, Info };
    Q_ENUM(Tone)

    PeekLine(Hub &hub, const AgentsSource &agents, QObject *parent = nullptr);

    bool onShow() const { return m_onShow; }
    /// Goes up with each new Peek.
    int serial() const { return m_serial; }
    QString symbol() const { return m_peek.symbol; }
    QString text() const { return m_peek.text; }
    Tone tone() const;
    bool isQuestion() const { return m_isQuestion; }
    /// The word on the row's pill; empty if it has none.
    QString actionLabel() const { return m_peek.actionLabel(); }
    /// What a press on the row does, for a screen reader.
    QString hint() const;
    /// How many sessions wait, if the row leads to one of several; else empty.
    QString waiting() const { return m_waiting; }

    Q_INVOKABLE void pressBegan();
    Q_INVOKABLE void act();
    Q_INVOKABLE void answer(bool allowed);

Q_SIGNALS:
    void changed();
    void waitingChanged();

private:
    void follow();
    void count();

    Hub &m_hub;
    const AgentsSource &m_agents;
    Peek m_peek;
    bool m_isQuestion = false;
    bool m_onShow = false;
    int m_serial = 0;
    QString m_waiting;
};

} // namespace velto
