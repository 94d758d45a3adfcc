#include "Feeds/Glances/GlanceReading.h"

#include "Core/GuardedGit.h"
#include "Platform/FileTree.h"
#include "Platform/ToolRunner.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kListingLimit{20};
constexpr qsizetype kMostBuilds = 10;
/// File timestamps have the resolution of the system's clock tick, on some file systems two whole seconds: a change within one
/// tick of a listing leaves no trace.
constexpr std::chrono::seconds kCoarsestStamp{3};

constexpr std::array<std::string_view, 3> kUnfinished{"download", "crdownload", "part"};

/// Names stay bytes: no need to decode a hundred thousand of them.
bool isUnfinished(std::string_view name)
{
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return false;
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    return std::ranges::any_of(kUnfinished, [extension = name.substr(dot + 1), lower](std::string_view known) {
        return std::ranges::equal(extension, known, {}, lower);
    });
}

/// The timestamp, if it is old enough.
std::optional<fs::file_time_type> settled(fs::file_time_type stamp, const QDateTime &now)
{
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(fs::file_time_type::clock::to_sys(stamp).time_since_epoch());
    return seconds.count() + kCoarsestStamp.count() < now.toSecsSinceEpoch() ? std::optional(stamp) : std::nullopt;
}

/// A missing folder holds nothing unfinished. What is watched in its place is the nearest folder above it that exists, where a
/// part of its path has to be created first.
Transfers awaited(const FileTree &tree, fs::path missing)
{
    std::error_code error;
    while (missing.has_relative_path()) {
        const fs::path above = missing.parent_path();
        std::shared_ptr<FolderChanges> changes = tree.changesIn(QFile::decodeName(QByteArray::fromStdString(above.native())));
        if (changes || fs::exists(above, error)) {
            // It may have been created meanwhile. A link to nowhere may lead somewhere later without a trace here.
            const bool still = fs::symlink_status(missing, error).type() == fs::file_type::not_found;
            return {0, {}, still ? std::move(changes) : nullptr};
        }
        missing = above;
    }
    return {};
}

} // namespace

bool Transfers::stillSo() const
{
    return changes && !changes->any();
}

int Transfers::descriptor() const
{
    return changes->descriptor();
}

Transfers readTransfers(const FileTree &tree, const QString &folder, const Transfers &before, const QDateTime &now)
{
    if (folder.isEmpty())
        return {};
    // Watched before it is read, so that no change in between is missed.
    std::shared_ptr<FolderChanges> changes = tree.changesIn(folder);
    const fs::path path(QFile::encodeName(folder).toStdString());
    std::error_code error;
    const auto stamp = fs::last_write_time(path, error);
    if (error)
        return awaited(tree, path);
    if (before.stamp == stamp)
        return {before.count, before.stamp, std::move(changes)};
    Transfers found{0, settled(stamp, now), std::move(changes)};
    for (auto entry = fs::directory_iterator(path, error); !error && entry != fs::directory_iterator(); entry.increment(error))
        found.count +=
            isUnfinished(std::string_view(entry->path().native()).substr(entry->path().native().rfind('/') + 1)) ? 1 : 0;
    return error ? Transfers{} : found;
}

int parseFailedBuilds(QByteArrayView listing)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromRawData(listing.data(), listing.size()));
    const QJsonArray runs = document.array();
    const bool objects = std::ranges::all_of(runs, [](const QJsonValue &run) { return run.isObject(); });
    return objects ? int(qMin(runs.size(), kMostBuilds)) : 0;
}

std::optional<int> readFailedBuilds(ToolRunner &tools)
{
    if (!tools.toolInstalled(u"gh"_s) || !tools.mayBeSignedIn(u"gh"_s))
        return std::nullopt;
    const RunResult result = tools.run(
        {u"gh"_s, u"run"_s, u"list"_s, u"--status"_s, u"failure"_s, u"--limit"_s, u"10"_s, u"--json"_s, u"databaseId"_s}, {},
        kListingLimit, guardedGit());
    return result.ok ? std::optional(parseFailedBuilds(result.out)) : std::nullopt;
}

} // namespace velto
