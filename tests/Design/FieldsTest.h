#pragma once

#include "Core/DateModel.h"
#include "Design/TabOrder.h"
#include "Platform/Fake/FakeClock.h"

#include <QAccessible>
#include <QQuickView>
#include <memory>

class QQuickItem;

namespace velto {

/// What one types into, ticks and chooses from: with the keyboard alone, and as a screen reader says it.
class FieldsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void oneOfAFewIsChosenByKeys();
    void oneOfAFewIsChosenWithThePointer();
    void aLineIsTyped();
    void aLineIsCleared();
    void aSecretIsNotShown();
    void severalLinesGrowAndThenScroll();
    void boxesAndSwitchesAskForTheOtherState_data();
    void boxesAndSwitchesAskForTheOtherState();
    void returnGoesOnToTheForm();
    void aDateIsTyped();
    void aDateIsPickedByKeys();
    void theCalendarTurnsItsPages();
    void theCalendarClosesByAPressElsewhere();
    void theCalendarGoesWithItsWindow();
    void aNoticeIsSaid();

private:
    /// Shows the QML in a window of 400 by 400, with `date` for it.
    void show(const QString &qml);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString &text);
    /// The item that has the keyboard, as a screen reader says it.
    QString focused() const;
    QAccessible::State focusedState() const;
    static QAccessibleInterface *accessible(QQuickItem *item);
    QQuickItem *item(const QString &objectName) const;
    /// The visible item with this accessible name.
    QQuickItem *named(const QString &name, QQuickItem *below = nullptr) const;
    void click(QQuickItem *item);

    FakeClock m_clock; // Saturday, 21 November 2026
    std::unique_ptr<DateModel> m_date;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<TabOrder> m_tabOrder;
    QQuickItem *m_root = nullptr;
};

} // namespace velto
