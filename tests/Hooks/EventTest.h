#pragma once
#include <QObject>

/// What is taken from the body of a hook call.
class EventTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsWhatClaudeCodeSends_data();
    void readsWhatClaudeCodeSends();
    void failsWithoutAnEventName_data();
    void failsWithoutAnEventName();
    void leavesOutWhatHasAnotherForm();
    void namesWhatTheToolTouches_data();
    void namesWhatTheToolTouches();
    void cutsTextsButNoCharacter();
};
