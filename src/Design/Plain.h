#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqml.h>

namespace velto {

/// Text from outside as it may be shown: on one line, with blanks in place of line breaks and control characters, and without
/// the marks that turn the direction of the text around it. Cut after so many characters that no view can show more.
QString plainLine(const QString &text);

/// The same for a text of several lines: its line breaks stay.
QString plainLines(const QString &text);

/// plainLine() and plainLines() for views; PlainText uses them.
class Plain : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    Q_INVOKABLE QString line(const QString &text) const { return plainLine(text); }
    Q_INVOKABLE QString lines(const QString &text) const { return plainLines(text); }
};

} // namespace velto
