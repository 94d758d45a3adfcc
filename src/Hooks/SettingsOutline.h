#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <variant>
#include <vector>

namespace velto {

/// Claude Code's settings, opened up as far as an edit of the hooks needs it: the object at the top, the object under "hooks",
/// and the lists of groups in that. Everything else is kept as the text that it is printed as. Big files therefore cost little
/// more than their own size.
struct SettingsNode {
    enum class Kind : quint8 { Text, Object, Array };

    QByteArray key; ///< if it is in an object
    Kind kind = Kind::Text;
    QByteArray text; ///< of a Text, laid out for its depth
    std::vector<SettingsNode> children; ///< of an Object, in order and with repeated keys; or of an Array
};

/// The outline, or one sentence about what is wrong. Depth is bounded; never recurses with its input.
std::variant<SettingsNode, QString> outlineOf(QByteArrayView json);

/// The text for a parser that refuses a lone high surrogate; printing restores the escape.
QByteArray withHalvesAsBytes(QByteArrayView json);
/// Two spaces per level, and text as JavaScript's JSON.stringify writes it.
QByteArray printed(const SettingsNode &root);
void appendQuoted(QByteArray &out, QByteArrayView text);

} // namespace velto
