#pragma once

#include "Core/Tab.h"

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <optional>

namespace velto {

/// One line that slides out of the strip. With `decide` it is a question.
struct Peek {
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id FINAL)
    Q_PROPERTY(QString symbol MEMBER symbol FINAL)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(Tone tone MEMBER tone FINAL)
    Q_PROPERTY(bool isQuestion READ isQuestion FINAL)
    Q_PROPERTY(bool resumes READ resumes FINAL)
    Q_PROPERTY(QString actionLabel READ actionLabel FINAL)
public:
    enum class Tone : int { Good, Warn, Bad, Info }; // QML of Qt 6.4 reads an enum of a gadget as an int, whatever its size
    Q_ENUM(Tone)
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
    bool resumes() const { return resume.has_value(); }
    /// What the row's pill says; empty if it has none.
    QString actionLabel() const;
};

} // namespace velto
