#include "Design/Plain.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace velto {

QString Plain::coded(const QString &text, const QString &family) const
{
    static const QRegularExpression code(u"`([^`\\n]+)`"_s);
    QString rich = visibleLines(text).toHtmlEscaped();
    rich.replace(u'\n', u"<br>"_s);
    return rich.replace(code, u"<span style=\"font-family:'%1'\">\\1</span>"_s.arg(family.toHtmlEscaped()));
}

} // namespace velto
