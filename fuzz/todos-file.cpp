// Any bytes in the place of the list of todos: they are refused, or what was read is written and read again without a loss, and
// each todo has a number of its own.

#include "Tabs/Todos/TodoJson.h"

#include <QSet>
#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    const auto todos = velto::decodeTodos(QByteArray(data, qsizetype(size)));
    if (!todos)
        return 0;
    QSet<qint64> numbers{0};
    for (const velto::Todo &todo : *todos) {
        require(!numbers.contains(todo.id));
        numbers.insert(todo.id);
    }
    const QByteArray written = velto::encodeTodos(*todos);
    const auto again = velto::decodeTodos(written);
    require(again && *again == *todos && velto::encodeTodos(*again) == written);
    return 0;
}
