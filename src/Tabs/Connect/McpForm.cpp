#include "Tabs/Connect/McpForm.h"

#include "Core/TerminalApp.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Platform/Clipboard.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace velto {

McpForm::McpForm(const Needs &needs, QObject *parent)
    : QObject(parent)
    , m_needs(needs)
    , m_servers({"name"_ba, "detail"_ba, "status"_ba, "statusText"_ba, "actionLabel"_ba})
{
}

void McpForm::setName(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    Q_EMIT changed();
}

void McpForm::setUrl(const QString &url)
{
    if (url == m_url)
        return;
    m_url = url;
    Q_EMIT changed();
}

bool McpForm::canAdd() const
{
    const QUrl url(m_url.trimmed(), QUrl::StrictMode);
    return !m_name.trimmed().isEmpty() && url.isValid() && url.scheme() == "https"_L1 && !url.host().isEmpty();
}

QString McpForm::problem() const
{
    if (m_url.trimmed().isEmpty() || canAdd())
        return {};
    return m_name.trimmed().isEmpty() ? tr("Give the server a name.") : tr("The address has to begin with https://.");
}

void McpForm::act(const QString &name)
{
    for (const MCPServer &server : m_needs.signalsSource.mcp()) {
        if (server.name != name || server.status == "ok"_L1)
            continue;
        const QString command = server.status == "auth"_L1 ? u"claude mcp login "_s : u"claude mcp get "_s;
        m_needs.terminal.launch(command + shellQuoted(name));
        return;
    }
}

void McpForm::copyEndpoint(const QString &name)
{
    for (const MCPServer &server : m_needs.signalsSource.mcp()) {
        if (server.name == name)
            return m_needs.clipboard.setText(server.detail);
    }
}

void McpForm::add()
{
    if (!canAdd())
        return;
    m_needs.terminal.launch(
        u"claude mcp add --transport http %1 %2"_s.arg(shellQuoted(m_name.trimmed()), shellQuoted(m_url.trimmed())));
    m_name.clear();
    m_url.clear();
    Q_EMIT changed();
}

void McpForm::retryAll()
{
    m_needs.signalsSource.retryMcp();
}

void McpForm::update()
{
    QList<RowModel::Row> rows;
    for (const MCPServer &server : m_needs.signalsSource.mcp()) {
        const bool ok = server.status == "ok"_L1;
        const bool auth = server.status == "auth"_L1;
        rows.append({server.name, server.detail, server.status,
                     ok         ? tr("Connected")
                         : auth ? tr("Needs sign-in")
                                : tr("Failed"),
                     ok         ? QString()
                         : auth ? tr("Sign in")
                                : tr("Inspect")});
    }
    m_servers.setRows(rows);
}

} // namespace velto
