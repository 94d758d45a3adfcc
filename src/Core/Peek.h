#pragma once

#include "Core/Tab.h"

#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <optional>

namespace velto {

/// One line that slides out of the strip. With `decide` it is a question.
struct Peek {
    enum class Tone : quint8 { Good, Warn, Bad, Info };
    /// True: allowed, false: denied, nothing: no answer. Called exactly once for each Peek that has one, on the UI thread.
    using Decide = std::function<void(std::optional<bool>)>;

    QString symbol;
    QString text; ///< also what duplicates are told by
    Tone tone = Tone::Info;
    std::optional<Tab> tab; ///< where a press on the row leads
    std::optional<QString> resume; ///< the Claude Code session that a press resumes
    std::optional<QString> cwd; ///< the folder for that
    std::optional<QUrl> url; ///< the link that a press opens
    Decide decide;
    QUuid id = QUuid::createUuid();

    bool isQuestion() const { return bool(decide); }
    /// What the row's pill says; empty if it has none.
    QString actionLabel() const;
};

} // namespace velto
