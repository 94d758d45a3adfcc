#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqml.h>

namespace velto {

/// Indents all rows of a wrapped line but its first, so that its continuation can't be taken for the next line. UI thread only.
class HangingIndent : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document MEMBER m_document WRITE setDocument NOTIFY changed FINAL)
    Q_PROPERTY(double indent MEMBER m_indent NOTIFY changed FINAL)
    Q_PROPERTY(double leading MEMBER m_leading NOTIFY changed FINAL)
    Q_PROPERTY(bool continued MEMBER m_continued NOTIFY changed FINAL)
public:
    using QObject::QObject;

    void setDocument(QQuickTextDocument *document);

    /// Applies it to the text as it is now. With `continued` the text begins in the middle of a line.
    Q_INVOKABLE void apply();
    /// `mark` beside the first row of each line, and nothing beside the rows it is wrapped into, nor beside what continues a
    /// line: a text of as many rows. `rows` and `width` are those of the document, by whose change a binding sees that it is
    /// wrapped anew.
    Q_INVOKABLE QString marks(const QString &mark, int rows, double width) const;

Q_SIGNALS:
    void changed();

private:
    QPointer<QQuickTextDocument> m_document;
    double m_indent = 0;
    double m_leading = 0; ///< pixels between two lines
    bool m_continued = false;
    bool m_applying = false; ///< which the text reports as a change
};

} // namespace velto
