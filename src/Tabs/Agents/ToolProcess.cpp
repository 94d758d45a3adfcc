#include "Tabs/Agents/ToolProcess.h"

#include "Platform/ToolRunner.h"

#include <QCoreApplication>
#include <QHash>
#include <algorithm>
#include <array>
#include <chrono>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLimit{20};

struct KnownTool {
    QLatin1StringView name;
    QLatin1StringView symbol;
    std::array<QLatin1StringView, 3> patterns; ///< lower case; empty ones match nothing
    QLatin1StringView editor = {}; ///< name of the program where it is installed in a folder of its own, or is an AppImage
};

constexpr std::array kKnownTools{
    KnownTool{"Codex"_L1, "chevron.left.forwardslash.chevron.right"_L1, {"/codex "_L1, "bin/codex"_L1, "codexcli.app"_L1}},
    KnownTool{"Cursor"_L1, "cursorarrow.rays"_L1, {"cursor.app/contents/macos/cursor"_L1, "cursor-agent"_L1}, "cursor"_L1},
    KnownTool{"Windsurf"_L1, "wind"_L1, {"windsurf.app/contents/macos/"_L1}, "windsurf"_L1},
    KnownTool{"Gemini CLI"_L1, "sparkles"_L1, {"bin/gemini"_L1, "@google/gemini-cli"_L1}},
    KnownTool{"Aider"_L1, "hammer"_L1, {"bin/aider"_L1}},
    KnownTool{"OpenCode"_L1, "terminal"_L1, {"bin/opencode"_L1}},
    KnownTool{"Goose"_L1, "bird"_L1, {"bin/goose"_L1, " goose session"_L1}},
    KnownTool{"Ollama"_L1, "cpu"_L1, {"ollama serve"_L1}},
};

QStringView trimmed(QStringView line)
{
    const auto blank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!line.isEmpty() && blank(line.front()))
        line = line.sliced(1);
    while (!line.isEmpty() && blank(line.back()))
        line.chop(1);
    return line;
}

/// "/usr/share/cursor/cursor", "/opt/windsurf/windsurf", "/tmp/.mount_cursorx1/cursor", "/home/me/cursor-1.2.appimage"; not the
/// many processes that such a program starts itself.
bool isEditor(QStringView commandLine, QLatin1StringView name)
{
    const QStringView line = trimmed(commandLine);
    if (name.isEmpty() || line.contains(" --type="_L1))
        return false;
    const QString program = line.split(u' ').front().toString();
    const qsizetype slash = program.lastIndexOf(u'/');
    const QString file = program.sliced(slash + 1);
    if (file.startsWith(name) && file.endsWith(".appimage"_L1))
        return true;
    const QString folder = program.first(slash + 1);
    const QString own = u"/%1/"_s.arg(name);
    return file == name && (folder.contains(own) || folder.contains(u"/.mount_%1"_s.arg(name)));
}

const KnownTool *toolOf(const QString &commandLine)
{
    const auto hit = std::ranges::find_if(kKnownTools, [&commandLine](const KnownTool &tool) {
        return isEditor(commandLine, tool.editor) || std::ranges::any_of(tool.patterns, [&](QLatin1StringView pattern) {
                   return !pattern.isEmpty() && commandLine.contains(pattern);
               });
    });
    return hit == kKnownTools.end() ? nullptr : &*hit;
}

bool isOlder(QStringView etime, QStringView since)
{
    return etime.size() != since.size() ? etime.size() > since.size() : since < etime;
}

void count(QStringView processLine, QHash<QLatin1StringView, ToolProcess> &seen)
{
    const QStringView line = trimmed(processLine);
    const qsizetype space = line.indexOf(u' ');
    if (space < 0)
        return;
    const QStringView etime = line.first(space);
    // Blanks at both ends let a pattern include one, and so match a path at the very end.
    const KnownTool *tool = toolOf(line.sliced(space).toString().toLower() + u' ');
    if (!tool)
        return;
    ToolProcess &entry = seen[tool->name];
    if (++entry.count == 1)
        entry = {tool->name, tool->symbol, 1, etime.toString(), {}};
    else if (isOlder(etime, entry.since))
        entry.since = etime.toString();
}

QString loadedModels(ToolRunner &tools)
{
    const QString text = QString::fromUtf8(tools.run({u"ollama"_s, u"ps"_s}, {}, kLimit).out);
    QStringList models;
    const auto lines = QStringView(text).split(u'\n', Qt::SkipEmptyParts);
    for (const QStringView line : lines.sliced(std::min<qsizetype>(1, lines.size()))) {
        const auto words = line.split(u' ', Qt::SkipEmptyParts);
        if (!words.isEmpty())
            models.append(words.front().toString());
    }
    return models.isEmpty() ? QCoreApplication::translate("ToolProcess", "no model loaded") : models.join(", "_L1);
}

} // namespace

QList<ToolProcess> scanTools(ToolRunner &tools)
{
    const QString table = QString::fromUtf8(
        tools.run({u"ps"_s, u"-axo"_s, u"etime=,args="_s}, {}, kLimit, ToolEnvironment{{"COLUMNS"_ba, std::nullopt}}).out);
    QHash<QLatin1StringView, ToolProcess> seen;
    for (const QStringView line : QStringView(table).split(u'\n', Qt::SkipEmptyParts))
        count(line, seen);
    if (const auto ollama = seen.find("Ollama"_L1); ollama != seen.end())
        ollama->note = loadedModels(tools);
    QList<ToolProcess> result = seen.values();
    std::ranges::sort(result, {}, &ToolProcess::name);
    return result;
}

QString shortEtime(const QString &etime)
{
    const QStringView text = etime;
    const auto days = text.split(u'-', Qt::SkipEmptyParts);
    if (days.size() == 2)
        return days.front().toString() + u'd';
    QList<qint64> numbers;
    for (const QStringView piece : text.split(u':')) {
        bool isNumber = false;
        const qint64 number = piece.toLongLong(&isNumber);
        if (isNumber)
            numbers.append(number);
    }
    if (numbers.size() == 3)
        return QString::number(numbers.front()) + u'h';
    if (numbers.size() == 2)
        return QString::number(numbers.front()) + u'm';
    return etime;
}

} // namespace velto
