#include "Platform/Terminals.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

struct Names {
    QLatin1StringView name;
    QLatin1StringView identifier;
};

constexpr Names namesOf(Terminals::App app)
{
    switch (app) {
    case Terminals::App::Terminal:
        break;
    case Terminals::App::ITerm:
        return {"iTerm"_L1, "com.googlecode.iterm2"_L1};
    case Terminals::App::Ghostty:
        return {"Ghostty"_L1, "com.mitchellh.ghostty"_L1};
    case Terminals::App::Warp:
        return {"Warp"_L1, "dev.warp.Warp-Stable"_L1};
    }
    return {"Terminal"_L1, "com.apple.Terminal"_L1};
}

} // namespace

QString Terminals::name(App app)
{
    return namesOf(app).name;
}

QString Terminals::identifier(App app)
{
    return namesOf(app).identifier;
}

} // namespace velto
