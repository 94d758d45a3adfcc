#pragma once

#include "ViewPage.h"

#include <QQuickItem>

namespace velto {

/// The Agents tab with the real store.
class AgentsPage : public ViewPage {
    Q_OBJECT

protected:
    /// With this many sessions of each kind.
    void show(int working = 0, int blocked = 0)
    {
        m_world->setSessions(working, blocked);
        m_world->refresh();
        ViewPage::show(m_world->agents, 400);
        m_world->background.finishAll();
    }
    /// From top to bottom.
    QList<QQuickItem *> rows() const { return rowsWith("isAgentRow"); }
    QStringList ids() const
    {
        QStringList ids;
        for (QQuickItem *shown : rows())
            ids += shown->property("agentId").toString();
        return ids;
    }
    QQuickItem *row(const QString &id) const { return rows().value(ids().indexOf(id)); }
};

} // namespace velto
