#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>
#include <span>

namespace velto {

/// One entry of the symbol table: a symbol's name and its glyph in the program's own symbol font.
struct SymbolEntry {
    QLatin1StringView name;
    char16_t code;
};

/// All symbols, sorted by name. Built from assets/symbols.json.
std::span<const SymbolEntry> symbolTable();

/// The text that draws the symbol in symbolFamily(); empty for a name that the table doesn't hold.
QString symbolGlyph(QStringView name);

/// The family of the symbol font. Loads it on the first call, which needs a QGuiApplication; empty if that failed.
QString symbolFamily();

} // namespace velto
