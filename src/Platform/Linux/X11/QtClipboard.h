#pragma once

#include "Platform/Clipboard.h"
#include "Platform/Linux/X11/XcbClipboardText.h"

#include <QObject>

namespace velto {

/// The desktop's clipboard. Counts copies from its construction on.
class QtClipboard final : public QObject, public Clipboard {
    Q_OBJECT
public:
    QtClipboard(XcbServer &server, Clock &clock, QObject *parent = nullptr);

    int changeCount() const override { return m_count; }
    QString text() const override;
    void read(int longest, QObject *context, std::function<void(std::optional<QString>)> done) override;
    void setText(const QString &text) override;

private:
    XcbServer &m_server;
    XcbClipboardText m_text;
    int m_count = 0;
};

} // namespace velto
