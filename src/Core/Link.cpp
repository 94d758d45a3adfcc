#include "Core/Link.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

bool breaksLink(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Control || c.category() == QChar::Other_Format;
}

/// Letters that a reader takes for Latin ones.
constexpr QStringView kLikeLatin = u"асԁеһіјӏорԛѕԝхуѵьᴦгпҽαικνορτυωγ";
constexpr QStringView kUnlikeTheirLook = u"ıĸŀŉ"; ///< Latin, and taken for others
constexpr char16_t kLastOfEurope = 0x17F;

bool isJapanese(QChar::Script script)
{
    return script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana;
}

/// Whether one part of a host reads as what it is.
bool isHonest(QStringView label, QChar::Script users)
{
    std::optional<QChar::Script> script;
    for (const char32_t c : label.toUcs4()) {
        const QChar::Script own = isJapanese(QChar::script(c)) ? QChar::Script_Han : QChar::script(c);
        if (own == QChar::Script_Common)
            continue;
        if (script.value_or(own) != own || (own != QChar::Script_Latin && own != users))
            return false;
        if (own == QChar::Script_Latin && (c > kLastOfEurope || kUnlikeTheirLook.contains(QChar(char16_t(c)))))
            return false;
        script = own;
    }
    const auto passes = [](QChar c) { return c.script() == QChar::Script_Common || kLikeLatin.contains(c); };
    return !script || script == QChar::Script_Latin || !std::ranges::all_of(label, passes);
}

} // namespace

QString shownHost(const QUrl &url, QChar::Script users)
{
    const QString host = url.host().toLower();
    const auto labels = QStringView(host).split(u'.');
    const bool honest = std::ranges::all_of(labels, [users](QStringView label) { return isHonest(label, users); });
    return honest ? host : url.host(QUrl::FullyEncoded).toLower();
}

QChar::Script usersScript()
{
    const auto language = QLocale::system().nativeLanguageName().toUcs4();
    return language.isEmpty() ? QChar::Script_Latin : QChar::script(language.first());
}

std::optional<QUrl> linkIn(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.size() > kLongestLink || std::ranges::any_of(trimmed, breaksLink))
        return std::nullopt;
    const QUrl url(trimmed);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

bool opensInBrowser(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == "https"_L1 || url.scheme() == "http"_L1);
}

std::optional<QUrl> typedLink(const QString &text)
{
    if (auto url = linkIn(text); url && opensInBrowser(*url))
        return url;
    // "meet.example.com/abc"; a single word isn't a host.
    const QString trimmed = text.trimmed();
    auto url = trimmed.contains(u':') ? std::nullopt : linkIn("https://"_L1 + trimmed);
    return url && url->host().contains(u'.') ? url : std::nullopt;
}

QString withoutPassword(const QString &address)
{
    const qsizetype scheme = address.indexOf("://"_L1);
    const auto isOutside = [](QChar c) { return c == u'/' || c == u'?' || c == u'#'; };
    // "//me:secret@host/?from=https://other" has none.
    const bool hasScheme = scheme >= 0 && std::none_of(address.begin(), address.begin() + scheme, isOutside);
    qsizetype from = hasScheme ? scheme + 3 : 0;
    while (from < address.size() && address[from] == u'/')
        ++from;
    qsizetype end = from;
    while (end < address.size() && !isOutside(address[end]))
        ++end;
    const qsizetype at = address.lastIndexOf(u'@', end - 1);
    const qsizetype colon = address.indexOf(u':', from);
    if (end == from || at < from || colon < 0 || colon > at)
        return address;
    return address.first(colon) + address.sliced(at);
}

} // namespace velto
