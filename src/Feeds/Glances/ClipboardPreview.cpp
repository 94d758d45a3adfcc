#include "Feeds/Glances/ClipboardPreview.h"

#include "Core/Link.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kYouTube = "youtube.com"_L1;
constexpr auto kShortYouTube = "youtu.be"_L1;
constexpr qsizetype kLongestTitle = 1000;

struct Service {
    QLatin1StringView host; ///< part of the link's host
    const char *title;
    QLatin1StringView symbol;
};
constexpr std::array kServices{
    Service{"github.com"_L1, QT_TRANSLATE_NOOP("velto::GlanceSource", "GitHub link"), "arrow.triangle.pull"_L1},
    Service{"figma.com"_L1, QT_TRANSLATE_NOOP("velto::GlanceSource", "Figma link"), "square.on.square"_L1},
    Service{"linear.app"_L1, QT_TRANSLATE_NOOP("velto::GlanceSource", "Linear issue"), "line.3.horizontal.decrease.circle"_L1},
    Service{"atlassian.net"_L1, QT_TRANSLATE_NOOP("velto::GlanceSource", "Jira issue"), "square.stack.3d.up"_L1},
};

QString translated(const char *text)
{
    return QCoreApplication::translate("velto::GlanceSource", text);
}

} // namespace

bool isYouTube(const QUrl &link)
{
    const QString host = link.host().toLower();
    return host.contains(kYouTube) || host == kShortYouTube;
}

std::optional<ClipboardPreview> previewOf(const QString &text)
{
    const auto link = linkIn(text);
    if (!link)
        return std::nullopt;
    if (isYouTube(*link))
        return ClipboardPreview{*link, translated("YouTube video"), translated("Copied link · loading preview"),
                                u"play.rectangle"_s};
    const QString host = link->host().toLower();
    const auto service = std::ranges::find_if(kServices, [&host](const Service &one) { return host.contains(one.host); });
    if (service == kServices.end())
        return ClipboardPreview{*link, shownHost(*link, usersScript()), translated("Copied link"), u"link"_s};
    return ClipboardPreview{*link, translated(service->title), translated("Copied link"), QString(service->symbol)};
}

std::optional<ClipboardPreview> upgraded(const ClipboardPreview &preview, const QByteArray &answer)
{
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    ClipboardPreview result = preview;
    result.title = object.value("title"_L1).toString(translated("YouTube video")).left(kLongestTitle);
    result.detail = object.value("author_name"_L1).toString(translated("YouTube")).left(kLongestTitle);
    return result;
}

} // namespace velto
