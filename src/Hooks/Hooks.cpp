#include "Hooks/Hooks.h"

#include "Platform/Defaults.h"

#include <QRandomGenerator>
#include <array>

namespace velto {

using namespace Qt::StringLiterals;

QString hookToken(Defaults &defaults)
{
    constexpr qsizetype kShortest = 32;
    const auto key = u"hookToken"_s;
    const auto stored = defaults.value(key);
    if (stored.typeId() == QMetaType::QString && stored.toString().size() >= kShortest)
        return stored.toString();

    std::array<quint32, 6> random; // 24 bytes
    QRandomGenerator::system()->fillRange(random.data(), qsizetype(random.size()));
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(random.data()), qsizetype(sizeof random));
    auto token = QString::fromLatin1(bytes.toHex());
    defaults.set(key, token);
    return token;
}

namespace {

QString option(bool pastProxy)
{
    return pastProxy ? u' ' + QStringView(kPastProxy).toString() : QString();
}

} // namespace

QString hookCommand(const QString &token, bool pastProxy)
{
    return u"curl -s -m 1"_s + option(pastProxy) + u" -X POST -H 'X-Velto-Token: "_s + token
        + u"' --data-binary @- http://127.0.0.1:4747/event >/dev/null 2>&1 || true"_s;
}

QString permissionCommand(const QString &token, bool pastProxy)
{
    return u"curl -s -m 35"_s + option(pastProxy) + u" -X POST -H 'X-Velto-Token: "_s + token
        + u"' --data-binary @- http://127.0.0.1:4747/permission 2>/dev/null || true"_s;
}

} // namespace velto
