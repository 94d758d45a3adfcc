#pragma once
#include <QObject>

namespace velto {

/// How the tokens of a day add up while logs are written.
class UsageReaderTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void addsUpWhatWasAdded();
    void waitsForTheEndOfALine();
    void looksAtLogsOnly();
    void opensNothingThatWasntTouchedToday();
    void leavesOutTheDayBefore();
    void startsOverAtMidnight();
    void leavesAloneWhatHasShrunk();
    void readsARotatedFileAnew();
    void passesOverLongLines();
    void takesLinesOfEverySize();
    void keepsSumsInBounds();
    void agreesWithThePlainWay();
    void countsOnceForAllThreads();
    void endsEarly();
};

} // namespace velto
