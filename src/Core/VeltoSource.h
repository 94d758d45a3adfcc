#pragma once

#include "Core/Tab.h"

#include <QObject>
#include <QString>
#include <QUrl>

namespace velto {

struct Peek;

/// The object behind one tab. Lives on the UI thread; announces every change of what it publishes with changed(), and
/// nothing else: a refresh that finds nothing new is silent.
class VeltoSource : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    Q_PROPERTY(QString symbol READ symbol CONSTANT FINAL)
    Q_PROPERTY(int badge READ badge NOTIFY changed FINAL)
    Q_PROPERTY(QUrl view READ makeView CONSTANT FINAL)
public:
    using QObject::QObject;

    virtual QString title() const = 0;
    virtual QString symbol() const = 0;
    /// The number on the tab; 0 shows none.
    virtual int badge() const = 0;
    /// The QML file of the tab's content. Its root takes this source as the required property `source`.
    virtual QUrl makeView() const = 0;
    /// Another store has changed, or the user's choices: for a tab that shows what the others know.
    virtual void worldChanged() { }
    /// A key of the open panel that neither the panel itself nor a text field with the focus uses. Each visible tab is asked,
    /// the one that is `onShow` and the others, until one takes it and returns true. Return and Enter are both Qt::Key_Return.
    virtual bool takeKey(QKeyCombination /*key*/, bool /*onShow*/) { return false; }
    /// Something is being typed here: the panel doesn't close by itself.
    virtual bool unfinished() const { return false; }

Q_SIGNALS:
    void changed();
    /// The user wants to go on in another tab.
    void tabWanted(velto::Tab tab);
    /// The user has changed what there is to read: every store should read again.
    void refreshWanted();
    /// There is news for the user.
    void peekWanted(const velto::Peek &peek);
};

} // namespace velto
