#include "Platform/Terminals.h"

using namespace Qt::StringLiterals;

namespace velto {

QString Terminals::storedName(App app)
{
    switch (app) {
    case App::Terminal:
        return u"com.apple.Terminal"_s;
    case App::ITerm:
        return u"com.googlecode.iterm2"_s;
    case App::Ghostty:
        return u"com.mitchellh.ghostty"_s;
    case App::Warp:
        return u"dev.warp.Warp-Stable"_s;
    }
    Q_UNREACHABLE();
}

} // namespace velto
