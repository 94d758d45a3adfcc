#pragma once

#include "StoreDesk.h"

#include "Core/Http.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Machine.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodoJson.h"
#include "Tabs/Todos/TodosSource.h"

#include <QSignalSpy>

namespace velto {

inline Todo makeTodo(qint64 id, const QString &title, const QString &due = {}, qint64 prio = 2, const QString &project = {},
                     const QString &scope = QStringLiteral("office"))
{
    Todo todo;
    todo.id = id;
    todo.title = title;
    todo.due = due;
    todo.prio = prio;
    todo.project = project;
    todo.scope = scope;
    return todo;
}

/// A source with everything it needs. It is the morning of Saturday, 21 November 2026.
struct Desk : StoreDesk {
    QuillboxMode mode; ///< what is selected; takes effect with the start, or with reconnect()
    FakeFiles fakeFiles;
    Files *files = &fakeFiles;
    ToolRunner *runner = &tools;
    FakeMachine machine;
    Http http;
    QuillboxClient client{http, background, [this] { return mode; }};
    std::unique_ptr<QuillboxSource> quillbox;
    std::unique_ptr<TodosSource> source;
    std::unique_ptr<QSignalSpy> changes;

    static inline const QString kFile = QStringLiteral("/home/me/data/todos.json");
    static inline const QString kYesterday = QStringLiteral("2026-11-20");
    static inline const QString kToday = QStringLiteral("2026-11-21");
    static inline const QString kTomorrow = QStringLiteral("2026-11-22");

    Desk() { places.data = QStringLiteral("/home/me/data"); }
    /// Starts with these todos in Velto's own file.
    TodosSource &start(const QList<Todo> &todos = {})
    {
        if (!todos.isEmpty())
            fakeFiles.contents.insert(kFile, encodeTodos(todos));
        quillbox = std::make_unique<QuillboxSource>(QuillboxSource::Needs{clock, machine, client, places.home});
        source = std::make_unique<TodosSource>(TodosSource::Needs{clock, background, *runner, *files, writer, places, *quillbox});
        changes = std::make_unique<QSignalSpy>(source.get(), &VeltoSource::changed);
        return *source;
    }
    QList<Todo> inFile() const { return decodeTodos(fakeFiles.contents.value(kFile)).value_or(QList<Todo>()); }
    void wait(std::chrono::milliseconds time) { clock.advance(time); }

    QString role(int row, TodoRows::Role role) const { return source->shown()->rows()->index(row, 0).data(role).toString(); }
    /// The visible rows, by title; headings in brackets.
    QStringList shown() const
    {
        QStringList titles;
        for (int i = 0; i < source->shown()->rows()->rowCount(); ++i) {
            const bool heading = source->shown()->rows()->index(i, 0).data(TodoRows::IsHeading).toBool();
            titles += heading ? u'[' + role(i, TodoRows::Title) + u']' : role(i, TodoRows::Title);
        }
        return titles;
    }
    QString summaryOf(const QAbstractItemModel *segments) const
    {
        QStringList texts;
        for (int i = 0; i < segments->rowCount(); ++i) {
            const bool selected = segments->index(i, 0).data(Qt::UserRole + 2).toBool();
            texts += (selected ? QStringLiteral("*") : QString()) + segments->index(i, 0).data(Qt::UserRole + 1).toString();
        }
        return texts.join(u'|');
    }
};

inline QStringList titlesOf(const QList<Todo> &todos)
{
    QStringList titles;
    for (const Todo &todo : todos)
        titles += todo.title;
    return titles;
}

} // namespace velto
