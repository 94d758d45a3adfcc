#pragma once

#include "Core/Tab.h"

#include <QJsonValue>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <chrono>
#include <functional>
#include <optional>

namespace velto {

/// What a question asks for, complete and unchanged. For the screen only: never compared, spoken, logged or stored.
struct Question {
    QString session; ///< the name of the session that asks
    std::optional<QString> cwd; ///< its folder
    QString tool; ///< the tool's name; empty if none was given
    QJsonValue input = QJsonValue::Undefined; ///< all that the tool is given; undefined if nothing came
    bool textIsCut = false; ///< the Peek's text leaves out the end of what the tool would do
};

/// One line that slides out of the strip. With `decide` it is a question.
struct Peek {
    enum class Tone : quint8 { Good, Warn, Bad, Info };
    /// True: allowed, false: denied, nothing: no answer. Called exactly once for each Peek that has one, on the UI thread.
    using Decide = std::function<void(std::optional<bool>)>;
    /// What a line says of the session that it is about; so it is found again when that is no longer true, and told together with
    /// others of its kind when many come at once.
    enum class News : quint8 { Other, NeedsYou, Finished };

    QString symbol;
    QString text; ///< also what duplicates are told by
    Tone tone = Tone::Info;
    std::optional<Tab> tab; ///< where a press on the row leads
    std::optional<QString> resume; ///< the Claude Code session that a press resumes
    std::optional<QString> cwd; ///< the folder for that
    std::optional<QUrl> url; ///< the link that a press opens
    Decide decide;
    /// What the row and its unfolded part show of a question; without it they show the text.
    std::optional<Question> question = std::nullopt;
    /// Secondary words after the text, such as the name of the session that the line is about; empty for none.
    QString beside = QString();
    News news = News::Other;
    QString session = {}; ///< which one the news is about
    /// How long a question's asker waits. If its turn comes when hardly anything of that is left, it gets no answer, and a line
    /// with the text `lapsed` takes its place.
    std::optional<std::chrono::milliseconds> patience = {};
    QString lapsed = {};
    QUuid id = QUuid::createUuid();

    bool isQuestion() const { return bool(decide); }
    /// What the row's pill says; empty if it has none.
    QString actionLabel() const;
};

} // namespace velto
