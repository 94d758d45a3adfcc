#include "Design/Symbols.h"

#include <QFile>
#include <QFontDatabase>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr SymbolEntry entry(const char *name, char16_t code)
{
    return {QLatin1StringView(name), code};
}

#define VELTO_SYMBOL(name, code) entry(name, code),
constexpr SymbolEntry kTable[] = {
#include "SymbolTable.inc"
};
#undef VELTO_SYMBOL

QString loadFont()
{
    QFile file(u":/velto/symbols.ttf"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList families =
        QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFontFromData(file.readAll()));
    return families.isEmpty() ? QString() : families.first();
}

} // namespace

std::span<const SymbolEntry> symbolTable()
{
    return kTable;
}

QString symbolGlyph(QStringView name)
{
    const auto found = std::ranges::lower_bound(
        kTable, name, [](auto left, auto right) { return left.compare(right) < 0; },
        [](const SymbolEntry &symbol) { return symbol.name; });
    if (found == std::end(kTable) || found->name != name)
        return {};
    return QString(QChar(found->code));
}

QString symbolFamily()
{
    static const QString family = loadFont();
    return family;
}

} // namespace velto
