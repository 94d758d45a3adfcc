#pragma once

#include <QValidator>
#include <QtQml/qqmlregistration.h>

namespace velto {

/// Refuses a text that the toolkit can't draw on one line in reasonable time. How long it is doesn't matter, but each change of
/// font, of direction or to a tab makes a piece of its own, and its time grows with the square of their number.
class LineValidator : public QValidator {
    Q_OBJECT
    QML_ELEMENT
public:
    using QValidator::QValidator;

    State validate(QString &text, int &cursor) const override;

Q_SIGNALS:
    /// What the user has typed or pasted wasn't taken in.
    void refused() const;
};

} // namespace velto
