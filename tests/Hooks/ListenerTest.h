#pragma once
#include <QObject>

/// The hook listener over a real socket.
class ListenerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void hearsAnEvent();
    void keepsQuietAboutWhatItCannotUse();
    void refusesWhoDoesNotKnowTheSecret();
    void answersAQuestion_data();
    void answersAQuestion();
    void leavesAQuestionToTheTerminalIfNobodyTakesIt();
    void answersOpenQuestionsWhenItDies();
    void mayBeDestroyedByWhatItCalls();
    void outlivesAnAskerThatLeaves();
    void boundsOpenQuestions();
    void hearsAmongSilentConnections();
    void isNotRunningWithoutThePort();
};
