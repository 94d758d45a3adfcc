#include "Platform/Linux/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace velto {

QtClipboard::QtClipboard(QObject *parent)
    : QObject(parent)
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { ++m_count; });
}

QString QtClipboard::text() const
{
    return QGuiApplication::clipboard()->text();
}

void QtClipboard::setText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace velto
