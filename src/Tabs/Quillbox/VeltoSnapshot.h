#pragma once

#include "Core/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace velto {

/// Everything that Velto shows from a hub: the one document that it answers with. Plain values, safe to hand between threads.
struct VeltoSnapshot {
    struct HubTodo {
        qint64 id = 0;
        QString title;
        QString body; ///< details, and below the separator the comments
        QString due; ///< empty or "yyyy-MM-dd"
        QString who;
        QString project;
        QString scope;
        qint64 prio = 0;
        bool operator==(const HubTodo &) const = default;
    };
    /// A live session, on whatever machine.
    struct Handoff {
        qint64 id = 0;
        QString name; ///< may begin with "Handoff · "
        std::optional<QString> topic;
        std::optional<QString> device; ///< the machine, as the hub spells it
        QString at; ///< for snapshotDate()
        bool operator==(const Handoff &) const = default;
    };
    /// Something that the voice assistant heard.
    struct Heard {
        qint64 id = 0;
        QString name; ///< may begin with "Tolver: "
        QString at; ///< for snapshotDate()
        bool operator==(const Heard &) const = default;
    };
    /// The learning card of the day.
    struct Gap {
        qint64 id = 0;
        std::optional<QString> area;
        QString question;
        std::optional<QString> grip; ///< the answer
        bool operator==(const Gap &) const = default;
    };

    QList<HubTodo> todos;
    QList<Handoff> handoffs;
    QList<Heard> heard;
    std::optional<Gap> gap;
    /// How many memories of each kind were written today, in the order of the document.
    QList<std::pair<QString, qint64>> writtenToday;

    /// Accepts the document only as a whole: it fails on any missing key and any value of another type. The error says what
    /// is wrong with which key, and repeats nothing of the document but its own keys.
    static Result<VeltoSnapshot, QString> decode(const QByteArray &json);

    bool operator==(const VeltoSnapshot &) const = default;
};

} // namespace velto
