#pragma once

#include "Core/Peek.h"
#include "Shell/QuestionRows.h"
#include "Shell/QuestionText.h"

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
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed FINAL)
    Q_PROPERTY(Tone tone READ tone NOTIFY changed FINAL)
    Q_PROPERTY(bool isQuestion READ isQuestion NOTIFY changed FINAL)
    Q_PROPERTY(bool inParts READ inParts NOTIFY changed FINAL)
    Q_PROPERTY(QString session READ session NOTIFY changed FINAL)
    Q_PROPERTY(QString tool READ tool NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    Q_PROPERTY(QString place READ place NOTIFY changed FINAL)
    Q_PROPERTY(bool exact READ exact NOTIFY changed FINAL)
    Q_PROPERTY(bool hasDetail READ hasDetail NOTIFY changed FINAL)
    Q_PROPERTY(QString beside READ beside NOTIFY changed FINAL)
    Q_PROPERTY(QString told READ told NOTIFY toldChanged FINAL)
    Q_PROPERTY(QString actionLabel READ actionLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString hint READ hint NOTIFY changed FINAL)
    Q_PROPERTY(QString waiting READ waiting NOTIFY waitingChanged FINAL)
public:
    enum class Tone : int { Good, Warn, Bad, Info };
    Q_ENUM(Tone)

    PeekLine(Hub &hub, const AgentsSource &agents, QObject *parent = nullptr);

    bool onShow() const { return m_onShow; }
    /// Grows with each new Peek.
    int serial() const { return m_serial; }
    QString symbol() const { return m_peek.symbol; }
    QString text() const { return m_peek.text; }
    /// The text as the names of the row and its pills have it, which says when it is cut.
    QString spoken() const;
    Tone tone() const;
    bool isQuestion() const { return m_isQuestion; }
    /// Whether it is shown in parts, each safe to show as it is; otherwise its text is shown.
    bool inParts() const { return m_peek.question.has_value(); }
    QString session() const { return m_question.session; }
    QString tool() const { return m_question.tool; }
    /// What the tool would do, or that nothing is known about it.
    QString detail() const;
    QString place() const { return m_question.place; }
    /// The detail is a command, a path or the like.
    bool exact() const { return m_question.exact; }
    bool hasDetail() const { return !m_question.detail.isEmpty(); }
    /// Secondary words beside the text.
    QString beside() const { return m_peek.beside; }
    /// The whole question, while it is unfolded.
    Q_INVOKABLE QAbstractItemModel *unfold();
    Q_INVOKABLE void fold();
    /// The same in words, for a screen reader.
    QString told() const { return m_rows.told(); }
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
    /// Another Peek is on show; all of it is known.
    void replaced();
    void waitingChanged();
    void toldChanged();

private:
    void follow();
    void count();

    Hub &m_hub;
    const AgentsSource &m_agents;
    Peek m_peek;
    QuestionLine m_question;
    QuestionRows m_rows{this}; // so that QML leaves it alone
    int m_unfolded = 0; ///< how many views show the rows
    bool m_isQuestion = false;
    bool m_onShow = false;
    int m_serial = 0;
    QString m_waiting;
};

} // namespace velto
