#include "Shell/PeekLine.h"

#include "Hub/Hub.h"
#include "Tabs/Agents/AgentsSource.h"

namespace velto {

PeekLine::PeekLine(Hub &hub, const AgentsSource &agents, QObject *parent)
    : QObject(parent)
    , m_hub(hub)
    , m_agents(agents)
{
    connect(&m_hub, &Hub::peekChanged, this, &PeekLine::follow);
    connect(&m_hub, &Hub::changed, this, &PeekLine::count);
    connect(&m_rows, &QuestionRows::modelReset, this, &PeekLine::toldChanged);
    follow();
}

PeekLine::Tone PeekLine::tone() const
{
    switch (m_peek.tone) {
    case Peek::Tone::Good:
        return Tone::Good;
    case Peek::Tone::Warn:
        return Tone::Warn;
    case Peek::Tone::Bad:
        return Tone::Bad;
    case Peek::Tone::Info:
        break;
    }
    return Tone::Info;
}

QString PeekLine::spoken() const
{
    return inParts() && m_peek.question->textIsCut ? m_peek.text + u'…' : m_peek.text;
}

QString PeekLine::hint() const
{
    return actionLabel().isEmpty() ? tr("Opens Velto") : tr("%1s").arg(actionLabel());
}

QString PeekLine::detail() const
{
    return hasDetail() ? m_question.detail : tr("no details given");
}

QAbstractItemModel *PeekLine::unfold()
{
    if (m_unfolded++ == 0 && m_peek.question)
        m_rows.set(questionParts(*m_peek.question));
    return &m_rows;
}

void PeekLine::fold()
{
    if (--m_unfolded == 0)
        m_rows.set({});
}

void PeekLine::pressBegan()
{
    m_hub.pressBegan(m_peek.id);
}

void PeekLine::act()
{
    m_hub.act(m_peek.id);
}

void PeekLine::answer(bool allowed)
{
    m_hub.answer(m_peek.id, allowed);
}

void PeekLine::follow()
{
    m_onShow = m_hub.hasPeek();
    const bool another = m_onShow && m_hub.peek().id != m_peek.id;
    if (another) {
        m_peek = m_hub.peek();
        m_isQuestion = m_peek.isQuestion();
        m_peek.decide = {}; // only the queue answers
        m_question = m_peek.question ? questionLine(*m_peek.question) : QuestionLine();
        if (m_unfolded > 0)
            m_rows.set(m_peek.question ? questionParts(*m_peek.question) : QList<QuestionPart>());
        ++m_serial;
    }
    Q_EMIT changed();
    if (another)
        Q_EMIT replaced();
    count();
}

void PeekLine::count()
{
    const int sessions = m_agents.waitingCount();
    const QString waiting = m_peek.resume && sessions > 1 ? tr("%1 waiting").arg(sessions) : QString();
    if (waiting == m_waiting)
        return;
    m_waiting = waiting;
    Q_EMIT waitingChanged();
}

} // namespace velto
