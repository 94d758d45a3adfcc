#include "Tabs/Todos/TodosSource.h"

#include "Core/Texts.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Platform/ToolRunner.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosKeys.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kWatchInterval{2};

TodoRows::Content contentOf(const QList<Todo> &todos, const TodoLists::Result &result)
{
    TodoRows::Content content{todos, {}, {}};
    for (const TodoLists::Group &group : result.groups) {
        content.rows.append({-1, content.projects.size()});
        content.projects.append(group.project);
        for (const qsizetype place : group.todos)
            content.rows.append({place, -1});
    }
    return content;
}

} // namespace

TodosSource::TodosSource(const Needs &needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(needs)
    , m_local(needs.places.home)
    , m_native(needs.files, needs.writer, needs.clock, needs.places)
    , m_localPatched(m_local.patched(needs.files))
    , m_form(
          needs.clock, [this](const Todo &todo) { save(todo); }, [this] { setDraft(std::nullopt); })
    , m_scopeRows({"value"_ba, "text"_ba, "selected"_ba})
    , m_filterRows({"value"_ba, "text"_ba, "selected"_ba})
{
    connect(&m_needs.quillbox, &QuillboxSource::snapshotTaken, this, [this] { takeSnapshot(); });
    connect(&m_needs.quillbox, &VeltoSource::changed, this, [this] { quillboxChanged(); });
    connect(&m_needs.writer, &FileWriter::changed, this, [this] { publish(); });
    connect(&m_native, &NativeTodos::replaced, this, &TodosSource::takeFile);
    if (m_needs.quillbox.mode().isMissing())
        setTodos(m_native.load());
    quillboxChanged();
    takeSnapshot();
    awaitMidnight();
}

TodosSource::~TodosSource() = default;

QString TodosSource::title() const
{
    return tr("Todos");
}

QString TodosSource::symbol() const
{
    return u"checklist"_s;
}

QUrl TodosSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Todos/TodosView.qml"_s);
}

bool TodosSource::takeKey(QKeyCombination key, bool onShow)
{
    return takeTodosKey(*this, key, onShow);
}

void TodosSource::refresh()
{
    // The day may be another one: the machine slept over midnight, or the clock was set.
    publish();
    if (m_needs.quillbox.mode().isLocal())
        readDatabase();
    else if (m_needs.quillbox.mode().isMissing())
        m_native.look();
}

void TodosSource::takeFile(QList<Todo> todos)
{
    if (!m_needs.quillbox.mode().isMissing())
        return;
    // It is still open in the file.
    if (m_pendingDone)
        todos.removeIf([id = m_pendingDone->id](const Todo &each) { return each.id == id; });
    setTodos(todos);
}

void TodosSource::readDatabase()
{
    ++m_dbReadings;
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools, database = m_local.database] { return loadTodos(tools, database); },
        [this, stamp = databaseStamp()](const LocalReading &reading) {
            --m_dbReadings;
            m_dbProblem = reading.todos ? std::nullopt : std::optional(reading.problem);
            if (reading.todos) {
                m_dbStamp = stamp;
                setTodos(*reading.todos);
            }
            publish();
        });
}

void TodosSource::quillboxChanged()
{
    const QuillboxMode &mode = m_needs.quillbox.mode();
    // From here on the list is that of another store. Velto's own file isn't written from it without a copy.
    if (std::exchange(m_wasMissing, mode.isMissing()) && !mode.isMissing())
        m_native.forget();
    if (!mode.isLocal())
        m_todoWatch.reset();
    else if (!m_todoWatch)
        m_todoWatch = m_needs.clock.every(kWatchInterval, [this] { watchDatabase(); });
    publish();
}

void TodosSource::watchDatabase()
{
    // A reading that failed leaves the old stamp, and so comes again.
    if (m_dbReadings == 0 && databaseStamp() != m_dbStamp)
        readDatabase();
}

std::optional<QDateTime> TodosSource::databaseStamp() const
{
    const QFileInfo database(m_local.database);
    return database.exists() ? std::optional(database.lastModified()) : std::nullopt;
}

void TodosSource::takeSnapshot()
{
    if (!m_needs.quillbox.mode().isHub())
        return;
    QList<Todo> todos;
    for (const VeltoSnapshot::HubTodo &record : m_needs.quillbox.snapshot().todos) {
        Todo todo{record.id, record.title, {}, record.due, record.who, record.project, record.scope, record.prio, {}};
        readBody(record.body, todo);
        todos.append(std::move(todo));
    }
    setTodos(todos);
}

void TodosSource::awaitMidnight()
{
    const QDateTime now = m_needs.clock.wallTime().toLocalTime();
    const auto left = std::chrono::milliseconds(now.msecsTo(now.date().addDays(1).startOfDay()));
    m_midnight = m_needs.clock.after(std::max(left, std::chrono::milliseconds(1)), [this] {
        publish();
        awaitMidnight();
    });
}

SourceState TodosSource::state() const
{
    return m_needs.quillbox.mode().isHub() ? m_needs.quillbox.state() : SourceState::ready();
}

QString TodosSource::label() const
{
    return m_needs.quillbox.mode().isMissing() ? tr("Kept in Velto on this Mac.") : m_needs.quillbox.modeLabel();
}

bool TodosSource::canEdit() const
{
    const QuillboxMode &mode = m_needs.quillbox.mode();
    return mode.isMissing() || (mode.isLocal() && m_localPatched);
}

bool TodosSource::canAdd() const
{
    return !m_needs.quillbox.mode().isLocal() || m_localPatched;
}

QString TodosSource::readOnlyNote() const
{
    return canAdd() ? QString()
                    : tr("Read-only: to add, edit and comment from Velto, install the todo.py from integrations/quillbox. "
                         "Marking done works.");
}

QString TodosSource::undoText() const
{
    return m_pendingDone ? tr("Done: %1").arg(m_pendingDone->title) : QString();
}

QList<TodosSource::Group> TodosSource::groups() const
{
    QList<Group> groups;
    for (const TodoLists::Group &group : m_result.groups) {
        groups.append({group.project, {}});
        for (const qsizetype place : group.todos)
            groups.back().todos.append(todos().at(place));
    }
    return groups;
}

QList<Todo> TodosSource::flat() const
{
    QList<Todo> flat;
    for (const TodoLists::Group &group : m_result.groups) {
        for (const qsizetype place : group.todos)
            flat.append(todos().at(place));
    }
    return flat;
}

std::optional<Todo> TodosSource::selected() const
{
    if (m_selectedRow < 0)
        return std::nullopt;
    return todos().at(m_rows.content().rows.at(m_selectedRow).todo);
}

const Todo *TodosSource::find(qint64 id) const
{
    const auto found = std::ranges::find(todos(), id, &Todo::id);
    return found == todos().end() ? nullptr : &*found;
}

std::optional<Todo> TodosSource::byRow(const QString &id) const
{
    bool isNumber = false;
    const qint64 number = id.toLongLong(&isNumber);
    const Todo *todo = isNumber ? find(number) : nullptr;
    return todo ? std::optional(*todo) : std::nullopt;
}

void TodosSource::setTodos(const QList<Todo> &todos)
{
    if (todos == m_lists.todos())
        return;
    m_lists.setTodos(todos);
    m_cut.reset();
    ++m_listCount;
    publish();
}

void TodosSource::setError(const std::optional<QString> &error)
{
    m_error = error;
    publish();
}

// Everything is worked out here, once for each change; what the views read is the outcome.
void TodosSource::publish()
{
    m_days = {today(m_needs.clock, 0), today(m_needs.clock, 1)};
    const TodoLists::Cut cut{m_scope, m_filter, m_search, m_days.today};
    if (m_cut != cut) {
        m_cut = cut;
        m_result = m_lists.cut(cut);
        m_rows.setContent(contentOf(todos(), m_result), m_days);
        publishSegments();
    }
    publishSelection();
    Published now{m_listCount, state(),     label(),        canEdit(),      canAdd(),
                  m_scope,     m_filter,    badge(),        overdueCount(), summary(),
                  m_error,     storeNote(), readOnlyNote(), m_pendingDone,  m_draft.has_value(),
                  emptyText()};
    if (now == m_published)
        return;
    m_published = std::move(now);
    Q_EMIT changed();
}

void TodosSource::publishSegments()
{
    const QString work = tr("Work %1").arg(count(u"office"_s));
    const QString personal = tr("Personal %1").arg(count(u"personal"_s));
    m_scopeRows.setRows({
        {u"office"_s, work, m_scope == "office"_L1},
        {u"personal"_s, personal, m_scope == "personal"_L1},
    });
    QList<RowModel::Row> filters;
    for (const Filter filter : kAllFilters)
        filters.append({rawValue(filter), velto::label(filter), filter == m_filter});
    m_filterRows.setRows(filters);
}

void TodosSource::publishSelection()
{
    m_rows.setOpen(m_openID);
    m_rows.setSelected(m_selectedID);
    const int row = m_rows.placeOf(m_selectedID);
    if (std::exchange(m_selectedRow, row) != row)
        Q_EMIT selectionChanged();
}

} // namespace velto
