#include "Tabs/Todos/TodosPage.h"

#include "Tabs/Todos/Desk.h"

#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace velto {

QList<Todo> TodosPage::some()
{
    QList<Todo> todos{makeTodo(1, u"Renew the passport"_s, Desk::kYesterday),
                      makeTodo(2, u"Send the invoice"_s, Desk::kToday, 1, u"Office"_s),
                      makeTodo(3, u"Water the plants"_s, Desk::kToday), makeTodo(4, u"Book the train"_s, u"2026-11-24"_s),
                      makeTodo(5, u"Read the paper"_s)};
    todos[1].who = u"Anna"_s;
    todos[1].details = u"To the <b>new</b> address:\nhttps://example.com"_s;
    todos[1].comments = {{u"Nov 20, 2026, 9:00 AM"_s, u"She asked again"_s}};
    return todos;
}

QList<Todo> TodosPage::many(int count)
{
    QList<Todo> todos;
    for (int i = 1; i <= count; ++i) {
        todos.append(makeTodo(i, u"Todo number %1"_s.arg(i), Desk::kToday, 2, u"Project %1"_s.arg(i / 40)));
        todos.last().who = i % 3 ? u"me"_s : u"Anna"_s;
    }
    return todos;
}

void TodosPage::close()
{
    m_tabOrder.reset();
    m_keys.reset();
    m_view.reset();
    m_contents.reset();
    ViewPage::close();
}

void TodosPage::show(const QList<Todo> &todos, int height)
{
    begin({{u"/home/me/data/todos.json"_s, encodeTodos(todos)}});
    m_world->hub.open(Tab::Todos);
    m_ui->setExpanded(true);
    m_contents = std::make_unique<PanelContents>(PanelContents::Needs{m_world->hub, m_world->prefs, m_world->everyday,
                                                                      m_world->agents, m_world->todos, m_world->quillbox});
    m_keys = std::make_unique<PanelKeys>(*m_view, *m_ui, *m_contents, m_world->hub);
    ViewPage::show(source(), height, true);
}

QStringList TodosPage::titles() const
{
    QStringList titles;
    for (QQuickItem *row : rows())
        titles += row->property("title").toString();
    return titles;
}

QQuickItem *TodosPage::row(const QString &title) const
{
    return rows().value(titles().indexOf(title));
}

} // namespace velto
