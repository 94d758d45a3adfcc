#pragma once
#include <QObject>

namespace velto {

/// What is read from one line of a log.
class UsageLineTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsWhatClaudeCodeWrites();
    void counts_data();
    void counts();
    void refuses_data();
    void refuses();
    void knowsTheTime_data();
    void knowsTheTime();
    void agreesWithThePlainWay();
    void findsEachHint();
    void findsEachBadEscape();
};

} // namespace velto
