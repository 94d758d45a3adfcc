#pragma once

#include "Core/RowModel.h"

#include <QObject>

namespace velto {

class Clipboard;
class SignalsSource;
class TerminalApp;

/// The MCP servers that Claude Code knows, and a way to add one. Everything that changes them runs in the user's terminal, so
/// that Claude Code alone keeps them. UI thread only.
class McpForm : public QObject {
    Q_OBJECT
    /// name, detail, status ("ok", "auth" or "failed"), statusText, actionLabel (empty while connected)
    Q_PROPERTY(QAbstractItemModel *servers READ servers CONSTANT FINAL)
    /// What is being typed.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed FINAL)
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY changed FINAL)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed FINAL)
    /// Why what is typed can't be added; empty if it can, or nothing is typed.
    Q_PROPERTY(QString problem READ problem NOTIFY changed FINAL)
public:
    /// All of it outlives this.
    struct Needs {
        SignalsSource &signalsSource;
        TerminalApp &terminal;
        Clipboard &clipboard;
    };
    explicit McpForm(const Needs &needs, QObject *parent = nullptr);

    QAbstractItemModel *servers() { return &m_servers; }
    const QString &name() const { return m_name; }
    void setName(const QString &name);
    const QString &url() const { return m_url; }
    void setUrl(const QString &url);
    bool canAdd() const;
    QString problem() const;

    /// "Sign in" or "Inspect", depending on what the server needs.
    Q_INVOKABLE void act(const QString &name);
    Q_INVOKABLE void copyEndpoint(const QString &name);
    /// Does nothing unless there is a name and an https address.
    Q_INVOKABLE void add();
    Q_INVOKABLE void retryAll();

    void update();

Q_SIGNALS:
    void changed();

private:
    Needs m_needs;
    RowModel m_servers;
    QString m_name;
    QString m_url;
};

} // namespace velto
