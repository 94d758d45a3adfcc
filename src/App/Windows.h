#pragma once

#include "Settings/SettingsStore.h"
#include "Settings/Welcome.h"

#include <QObject>
#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace velto {

class Accessibility;
class Appearance;

/// The ordinary windows: created when first needed, then kept with their state, even while closed. UI thread only.
class Windows : public QObject {
    Q_OBJECT
public:
    Windows(Appearance &appearance, const Accessibility &accessibility, const SettingsStore::Needs &settings,
            const Welcome::Needs &welcome, QObject *parent = nullptr);
    ~Windows() override;

    void showSettings();
    void showWelcome();
    /// Follows what the user last used: the keyboard or a pointer.
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user wants to see what a question looks like.
    void questionWanted();
    /// The user is through with the welcome.
    void welcomed();
    void quitWanted();

private:
    void show(QQuickWindow &window);
    void showWhereTheKeyboardIs(QQuickWindow &window) const;
    void followAccessibility();
    QQuickWindow *make(const char *file, QObject *store);
    void paint(QQuickWindow &window) const;
    void center(QQuickWindow &window) const;

    bool m_byKeys = true; ///< unknown at first; a focus mark too many does less harm than none
    Appearance &m_appearance;
    const Accessibility &m_accessibility;
    SettingsStore::Needs m_settingsNeeds;
    Welcome::Needs m_welcomeNeeds;
    std::unique_ptr<QQmlEngine> m_engine; ///< of their own, so that the strip's stays small
    std::unique_ptr<SettingsStore> m_settings;
    std::unique_ptr<Welcome> m_welcome;
    std::unique_ptr<QQuickWindow> m_settingsWindow;
    std::unique_ptr<QQuickWindow> m_welcomeWindow;
};

} // namespace velto
