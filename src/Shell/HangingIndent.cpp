#include "Shell/HangingIndent.h"

#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

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

} // namespace velto
