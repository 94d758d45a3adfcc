#include "Platform/Linux/X11/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>

namespace velto {

QtClipboard::QtClipboard(XcbServer &server, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_text(server, clock)
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] {
        ++m_count;
        copied();
    });
}

QString QtClipboard::text() const
{
    return QGuiApplication::clipboard()->text();
}

void QtClipboard::read(int longest, QObject *context, std::function<void(std::optional<QString>)> done)
{
    // What this program itself copied, and any clipboard other than X11's, can be read at once.
    const auto *clipboard = QGuiApplication::clipboard();
    if (clipboard->ownsClipboard() || !m_server.exists()) {
        const auto *data = clipboard->mimeData();
        const auto text = data && data->hasText() ? std::optional(data->text()) : std::nullopt;
        done(text && text->toUtf8().size() <= longest ? text : std::nullopt);
        return;
    }
    m_text.read(longest, [alive = QPointer(context), done = std::move(done)](const std::optional<QString> &text) {
        if (alive)
            done(text);
    });
}

void QtClipboard::setText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace velto
