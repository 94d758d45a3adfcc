#pragma once

#include <QObject>

namespace velto {

/// Every symbol that the program names can be drawn.
class SymbolsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyEntryIsDrawn();
    void unknownNamesDrawNothing();
    void picturesAreSharpAtEveryScale();
    void everyNameInTheSourcesIsKnown();
    void noTextIsRichByAccident();
};

} // namespace velto
