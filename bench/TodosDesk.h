#pragma once

#include "Core/Http.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Fake/InlineBackground.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodoJson.h"
#include "Tabs/Todos/TodosSource.h"

namespace velto {

/// Half of them due within weeks, in twenty projects.
inline QList<Todo> benchTodos(int count)
{
    using namespace Qt::StringLiterals;
    QList<Todo> list;
    const QDate day(2026, 11, 1);
    for (int i = 0; i < count; ++i) {
        Todo todo;
        todo.id = i + 1;
        todo.title = u"Answer the letter of customer %1"_s.arg(i * 7919 % count);
        todo.details = u"They asked for the second time, and would like to have it in writing. See the notes of last week."_s;
        todo.due = i % 2 == 0 ? textOf(day.addDays(i % 40)) : QString();
        todo.who = i % 5 == 0 ? u"Kim"_s : u"me"_s;
        todo.project = i % 3 == 0 ? QString() : u"project %1"_s.arg(i % 20);
        todo.scope = i % 10 == 0 ? u"personal"_s : u"office"_s;
        todo.prio = 1 + i % 3;
        list.append(todo);
    }
    return list;
}

/// A source with so many todos in its file, all of them shown.
struct TodosDesk {
    FakeClock clock;
    FakeBackground background;
    InlineBackground lane;
    FileWriter writer{lane, clock};
    FakeToolRunner tools;
    FakeFiles files;
    Places places{QStringLiteral("/home/me"), {}, QStringLiteral("/home/me/data"), {}};
    FakeMachine machine;
    Http http;
    QuillboxClient client{http, background};
    QuillboxSource quillbox{{clock, machine, client, places.home}};
    std::unique_ptr<TodosSource> source;

    explicit TodosDesk(int count)
    {
        files.contents.insert(QStringLiteral("/home/me/data/todos.json"), encodeTodos(benchTodos(count)));
        source = std::make_unique<TodosSource>(TodosSource::Needs{clock, background, tools, files, writer, places, quillbox});
        source->shown()->setFilter(Filter::All);
    }
};

} // namespace velto
