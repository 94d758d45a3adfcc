// Any bytes as Claude Code's settings: an edit refuses them or produces valid JSON; a second install changes nothing; other
// programs' settings survive install and removal, token by token.

#include "Hooks/SettingsEdit.h"
#include "Hooks/SettingsOutline.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace velto;

namespace {

const QByteArray kMarker = "127.0.0.1:4747/";
const std::vector<SettingsHook> kHooks{{"Stop", "curl 127.0.0.1:4747/event", std::nullopt},
                                       {"PermissionRequest", "curl 127.0.0.1:4747/permission", 40}};

void demand(bool truth, const char *what)
{
    if (truth)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

QByteArray whole(const SettingsText &text)
{
    demand(std::holds_alternative<QByteArray>(text), "what was edited once can be edited again");
    return std::get<QByteArray>(text);
}

/// Without the keys under which our own groups may be: the edit may add, tidy or replace there.
QByteArray foreign(QByteArrayView settings)
{
    constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");
    auto outline = outlineOf(settings.startsWith(kByteOrderMark) ? settings.sliced(kByteOrderMark.size()) : settings);
    demand(std::holds_alternative<SettingsNode>(outline), "the edit gives JSON");
    auto &root = std::get<SettingsNode>(outline);
    for (SettingsNode &member : root.children) {
        if (member.key == "hooks")
            std::erase_if(member.children,
                          [](const SettingsNode &event) { return event.key == "Stop" || event.key == "PermissionRequest"; });
    }
    std::erase_if(root.children, [](const SettingsNode &member) {
        return member.key == "hooks" && (member.kind != SettingsNode::Kind::Object || member.children.empty());
    });
    return printed(root);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView settings(reinterpret_cast<const char *>(data), qsizetype(size));
    const SettingsText first = withHooks(settings, kHooks, kMarker);
    const SettingsText removed = withoutHooks(settings, kHooks, kMarker);
    demand(first.index() == removed.index(), "both edits refuse the same");
    if (std::holds_alternative<QString>(first)) {
        demand(!std::get<QString>(first).isEmpty(), "a refusal says why");
        return 0;
    }
    const QByteArray installed = whole(first);
    demand(whole(withHooks(installed, kHooks, kMarker)) == installed, "a second install changes nothing");
    demand(foreign(installed) == foreign(settings), "an install keeps what isn't ours");

    const QByteArray uninstalled = whole(withoutHooks(installed, kHooks, kMarker));
    demand(foreign(uninstalled) == foreign(settings), "a removal keeps what isn't ours");
    demand(whole(withoutHooks(uninstalled, kHooks, kMarker)) == uninstalled, "a second removal changes nothing");
    demand(uninstalled == std::get<QByteArray>(removed), "an install leaves no trace after its removal");
    return 0;
}
