#include "Design/HangingIndent.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>

namespace velto {

void HangingIndent::setDocument(QQuickTextDocument *document)
{
    m_document = document;
    Q_EMIT changed();
}

void HangingIndent::apply()
{
    QTextDocument *text = m_document ? m_document->textDocument() : nullptr;
    if (!text || m_applying)
        return;
    const QScopedValueRollback applying(m_applying, true);
    QTextBlockFormat format;
    format.setLineHeight(m_leading, QTextBlockFormat::LineDistanceHeight);
    format.setLeftMargin(m_indent);
    format.setTextIndent(-m_indent);
    QTextCursor all(text);
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(format);
    if (m_continued) {
        QTextCursor first(text);
        format.setTextIndent(0);
        first.mergeBlockFormat(format);
    }
}

QString HangingIndent::marks(const QString &mark, int /*rows*/, double /*width*/) const
{
    QStringList lines;
    const QTextDocument *text = m_document ? m_document->textDocument() : nullptr;
    for (QTextBlock block = text ? text->begin() : QTextBlock(); block.isValid(); block = block.next()) {
        lines.append(m_continued && block.blockNumber() == 0 ? QString() : mark);
        lines.resize(lines.size() + std::max(0, block.layout()->lineCount() - 1));
    }
    return lines.join(u'\n');
}

} // namespace velto
