#pragma once
#include <QObject>

/// The secret of the hook commands, and the commands.
class TokenTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void isMadeOnceAndKept();
    void keepsAStoredOneOf32Characters();
    void commandsCarryIt();
};
