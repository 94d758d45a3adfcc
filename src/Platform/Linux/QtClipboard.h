#pragma once

#include "Platform/Clipboard.h"

#include <QObject>

namespace velto {

/// The desktop's clipboard. Counts from the moment it is made.
class QtClipboard final : public QObject, public Clipboard {
    Q_OBJECT
public:
    explicit QtClipboard(QObject *parent = nullptr);

    int changeCount() const override { return m_count; }
    QString text() const override;
    void setText(const QString &text) override;

private:
    int m_count = 0;
};

} // namespace velto
