#pragma once

#include "Tabs/Home/BriefPage.h"

namespace velto {

struct Todo;

/// The rows of the user's own day: sessions, meetings, focus, music, todos and what to learn. Each function adds those of its
/// subject.
class DayBrief {
    Q_DECLARE_TR_FUNCTIONS(velto::DayBrief)
public:
    explicit DayBrief(BriefPage &page)
        : m_page(page)
    {
    }

    void agents();
    void calendar();
    void focus();
    void media();
    void todos();
    void priority();
    void learning();

private:
    void addTodos(const QList<Todo> &todos, bool late);

    BriefPage &m_page;
};

} // namespace velto
