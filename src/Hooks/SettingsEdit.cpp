#include "Hooks/SettingsEdit.h"

#include "Hooks/SettingsOutline.h"

#include <QCoreApplication>
#include <algorithm>
#include <rapidjson/document.h>

namespace velto {

namespace {

using Kind = SettingsNode::Kind;

constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");
constexpr QByteArrayView kHooks("hooks");

bool isGroupList(const SettingsNode &node)
{
    return node.kind == Kind::Array && std::all_of(node.children.begin(), node.children.end(), [](const SettingsNode &group) {
               return group.text.startsWith('{');
           });
}

/// Of a repeated key the last one counts, as for Claude Code.
const rapidjson::Value *lastMember(const rapidjson::Value &object, const char *name)
{
    const rapidjson::Value *found = nullptr;
    for (const auto &member : object.GetObject()) {
        if (member.name == name)
            found = &member.value;
    }
    return found;
}

bool isOurs(const SettingsNode &group, QByteArrayView marker)
{
    if (!group.text.contains(marker)) // the printed text escapes no character that a marker contains
        return false;
    rapidjson::Document document;
    const QByteArray text = withHalvesAsBytes(group.text);
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(text.constData(),
                                                                                           std::size_t(text.size()));
    if (document.HasParseError() || !document.IsObject())
        return false;
    const rapidjson::Value *hooks = lastMember(document, "hooks");
    if (!hooks || !hooks->IsArray())
        return false;
    const auto items = hooks->GetArray();
    if (!std::all_of(items.begin(), items.end(), [](const auto &item) { return item.IsObject(); }))
        return false;
    return std::any_of(items.begin(), items.end(), [marker](const auto &item) {
        const rapidjson::Value *command = lastMember(item, "command");
        return command && command->IsString()
            && QByteArrayView(command->GetString(), command->GetStringLength()).contains(marker);
    });
}

SettingsNode *lastChild(SettingsNode &parent, QByteArrayView key)
{
    const auto found = std::find_if(parent.children.rbegin(), parent.children.rend(),
                                    [key](const SettingsNode &child) { return child.key == key; });
    return found == parent.children.rend() ? nullptr : &*found;
}

/// The last child of this name, emptied unless it `fits`, and added if there is none.
template <typename Fits> SettingsNode &child(SettingsNode &parent, QByteArrayView key, Kind kind, Fits fits)
{
    SettingsNode *found = lastChild(parent, key);
    if (!found) {
        found = &parent.children.emplace_back();
        found->key = key.toByteArray();
    }
    if (!fits(*found)) {
        found->kind = kind;
        found->text.clear();
        found->children.clear();
    }
    return *found;
}

void removeOurs(SettingsNode &hooks, QByteArrayView event, QByteArrayView marker)
{
    for (SettingsNode &list : hooks.children) {
        if (list.key == event && isGroupList(list))
            std::erase_if(list.children, [marker](const SettingsNode &group) { return isOurs(group, marker); });
    }
}

SettingsNode groupOf(const SettingsHook &hook)
{
    SettingsNode group;
    QByteArray &text = group.text;
    // Indented as it stands in the file, three levels deep.
    text = "{\n"
           "        \"hooks\": [\n"
           "          {\n"
           "            \"type\": \"command\",\n"
           "            \"command\": ";
    appendQuoted(text, hook.command);
    if (hook.timeoutSeconds)
        text += ",\n            \"timeout\": " + QByteArray::number(*hook.timeoutSeconds);
    text += "\n          }\n"
            "        ]\n"
            "      }";
    return group;
}

void install(SettingsNode &root, const std::vector<SettingsHook> &hooks)
{
    SettingsNode &table = child(root, kHooks, Kind::Object, [](const SettingsNode &node) { return node.kind == Kind::Object; });
    for (const SettingsHook &hook : hooks)
        child(table, hook.event, Kind::Array, isGroupList).children.push_back(groupOf(hook));
}

void tidy(SettingsNode &root, const std::vector<SettingsHook> &hooks)
{
    std::erase_if(root.children, [&hooks](SettingsNode &table) {
        if (table.key != kHooks)
            return false;
        std::erase_if(table.children, [&hooks](const SettingsNode &list) {
            const bool known =
                std::any_of(hooks.begin(), hooks.end(), [&list](const auto &hook) { return hook.event == list.key; });
            return known && (list.children.empty() || !isGroupList(list));
        });
        return table.children.empty(); // also true if it wasn't an object
    });
}

template <typename Change>
SettingsText edited(QByteArrayView settings, const std::vector<SettingsHook> &hooks, QByteArrayView marker, Change change)
{
    const bool marked = settings.startsWith(kByteOrderMark);
    auto outline = outlineOf(marked ? settings.sliced(kByteOrderMark.size()) : settings);
    if (const auto *problem = std::get_if<QString>(&outline))
        return *problem;
    auto &root = std::get<SettingsNode>(outline);
    if (root.kind != Kind::Object)
        return QCoreApplication::translate("HookInstaller",
                                           "Your Claude settings file isn't valid JSON, so Velto left it alone.");
    for (SettingsNode &table : root.children) {
        if (table.key != kHooks)
            continue;
        for (const SettingsHook &hook : hooks)
            removeOurs(table, hook.event, marker);
    }
    change(root);
    QByteArray out = printed(root);
    if (marked)
        out.prepend(kByteOrderMark);
    if (settings.endsWith('\n'))
        out.append('\n');
    return out;
}

} // namespace

SettingsText withHooks(QByteArrayView settings, const std::vector<SettingsHook> &hooks, QByteArrayView marker)
{
    return edited(settings, hooks, marker, [&](SettingsNode &root) { install(root, hooks); });
}

SettingsText withoutHooks(QByteArrayView settings, const std::vector<SettingsHook> &hooks, QByteArrayView marker)
{
    return edited(settings, hooks, marker, [&](SettingsNode &root) { tidy(root, hooks); });
}

} // namespace velto
