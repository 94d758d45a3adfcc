#pragma once

#include <QString>
#include <array>

namespace velto {

/// The terminals of this desktop that a user can choose from. UI thread only.
class Terminals {
public:
    /// Terminal is the desktop's own, which is always there.
    enum class App : quint8 { Terminal, ITerm, Ghostty, Warp };

    static constexpr std::array kAll{App::Terminal, App::ITerm, App::Ghostty, App::Warp};

    Terminals() = default;
    Terminals(const Terminals &) = delete;
    Terminals &operator=(const Terminals &) = delete;
    virtual ~Terminals() = default;

    virtual bool installed(App app) const = 0;
    /// Runs a shell command line in a new window of that terminal; returns at once and reports nothing.
    virtual void launch(App app, const QString &commandLine) = 0;

    /// Its name for people.
    static QString name(App app);
    /// The identifier under which the settings keep a choice, and by which Applications knows it; the same on every platform.
    static QString identifier(App app);
};

} // namespace velto
