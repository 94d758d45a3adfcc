#pragma once

#include "Core/Visible.h"

#include <QObject>
#include <QString>
#include <QtQml/qqml.h>

namespace velto {

/// Text from outside, and our own, as views may show it, on one line or several; used by PlainText, and by whatever names a
/// control to a screen reader.
class Plain : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    Q_INVOKABLE QString line(const QString &text) const { return visibleLine(text); }
    Q_INVOKABLE QString lines(const QString &text) const { return visibleLines(text); }
    /// Rich text that says `text`, with what is between backticks in a font of this family.
    Q_INVOKABLE QString coded(const QString &text, const QString &family) const;
};

} // namespace velto
