#pragma once

#include <QObject>
#include <QString>

namespace velto {

/// What the user has set the desktop to do so as to see and hear better. UI thread only; answers come from memory.
class Accessibility : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool screenReaderOn READ screenReaderOn NOTIFY changed FINAL)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed FINAL)
public:
    using QObject::QObject;

    virtual bool screenReaderOn() const = 0;
    virtual bool reducedMotion() const = 0;
    /// The text scale that the user chose, 1 to 2.
    virtual double textScale() const { return 1; }
    /// Whether the user wants everything with strong edges.
    virtual bool highContrast() const { return false; }
    /// Has the screen reader say `text` now, interrupting what it is saying.
    virtual void announce(const QString &text) = 0;

Q_SIGNALS:
    void changed();
    /// A backend that announces through the window's own accessible tree asks the view for it with this.
    void announcementRequested(const QString &text);
};

} // namespace velto
