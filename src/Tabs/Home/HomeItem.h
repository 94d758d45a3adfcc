#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace velto {

/// One row of the brief: a fact, how urgent it is, and what can be done about it.
struct HomeItem {
    /// In ranking order.
    enum class Tone : int { Bad, Warn, Info, Off };
    struct Action {
        QString label;
        std::function<void()> run; ///< UI thread
    };

    QString id; ///< stable, unique in the list
    QString symbol;
    Tone tone = Tone::Info;
    QString title;
    QString detail = {}; ///< may be empty
    QString source = {}; ///< where the fact comes from; may be empty
    std::optional<Action> action = {};
    bool setup = false; ///< asks the user to connect something
    bool checking = false; ///< a first read is under way

    bool urgent() const { return tone == Tone::Bad || tone == Tone::Warn; }
    /// What the row does can't be compared; rows that look alike do the same.
    bool operator==(const HomeItem &other) const
    {
        return id == other.id && symbol == other.symbol && tone == other.tone && title == other.title && detail == other.detail
            && source == other.source && setup == other.setup
            && (action ? action->label : QString()) == (other.action ? other.action->label : QString());
    }
};

} // namespace velto
