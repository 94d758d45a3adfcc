#pragma once

#include <QStringList>
#include <QtGlobal>

namespace velto {

/// Collects the toolkit's warnings between start() and stop(): a view that warns is broken.
class Warnings {
public:
    static void start()
    {
        s_collected.clear();
        s_before = qInstallMessageHandler(collect);
    }
    /// The warnings since start().
    static QStringList stop()
    {
        qInstallMessageHandler(s_before);
        s_before = nullptr;
        return s_collected;
    }

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        // The offscreen platform has no stacking order.
        const bool platform = text == QStringLiteral("This plugin does not support raise()");
        if ((type == QtWarningMsg || type == QtCriticalMsg) && !platform)
            s_collected += text;
        if (s_before)
            s_before(type, context, text);
    }

    // A message handler is a plain function.
    static inline QStringList s_collected;
    static inline QtMessageHandler s_before = nullptr;
};

} // namespace velto
