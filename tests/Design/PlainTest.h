#pragma once

#include <QObject>

namespace velto {

/// What text from outside looks like when it is shown.
class PlainTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsOneHarmlessLine_data();
    void showsOneHarmlessLine();
    void keepsTheLinesOfALongText();
    void cutsWhatNobodyCanRead();
};

} // namespace velto
