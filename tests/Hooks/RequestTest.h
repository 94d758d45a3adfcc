#pragma once
#include <QObject>

/// What the reader of hook requests makes of bytes from anywhere.
class RequestTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void judgesTheSameHoweverTheBytesAreCut_data();
    void judgesTheSameHoweverTheBytesAreCut();
    void refusesBeforeTheBodyHasCome();
    void takesAtMost256000BytesInAll();
    void repliesByteForByte();
};
