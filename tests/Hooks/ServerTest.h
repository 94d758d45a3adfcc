#pragma once
#include <QObject>

/// The loopback server, with a small protocol of the test's own.
class ServerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersInPiecesAndAtTheEndOfTheStream();
    void sendsALongReplyToASlowReader();
    void letsAPeerFinishThatWasAnsweredEarly();
    void sendsRepliesGivenJustBeforeTheEnd();
    void repliesToNobodyElseOnceThePeerIsGone();
    void dropsTheMostSilentWhenOneMoreComes();
    void dropsTheUnfinishedInTheEndButNotTheWaiting();
    void boundsWhatAllTogetherSend();
    void waitsOutALackOfDescriptors();
    void staysOffAPortThatIsTaken();
};
