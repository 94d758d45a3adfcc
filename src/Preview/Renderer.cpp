#include "Preview/Renderer.h"

#include "Design/Theme.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kStill = 100ms; ///< without a frame for this long, a view has its shape
constexpr auto kSettling = 600ms; ///< at most

QColor background(bool dark)
{
    return dark ? QColor::fromRgbF(0.12F, 0.12F, 0.12F) : QColor::fromRgbF(0.16F, 0.2F, 0.3F);
}

/// Waits until no more frames are drawn: whatever still loads or moves draws one.
void letSettle(const QQuickWindow &window)
{
    QEventLoop loop;
    QTimer still;
    still.setInterval(kStill);
    QObject::connect(&still, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&window, &QQuickWindow::frameSwapped, &still, qOverload<>(&QTimer::start));
    QTimer::singleShot(kSettling, &loop, &QEventLoop::quit);
    loop.exec();
}

std::optional<QString> write(const QImage &image, const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size())
        return std::nullopt;
    return QCoreApplication::translate("Renderer", "Velto can't write the picture %1: %2.").arg(path, file.errorString());
}

} // namespace

Renderer::Renderer()
{
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
}

std::optional<QString> Renderer::render(const QUrl &view, const QVariantMap &properties, QSize size, const QString &path,
                                        bool dark)
{
    QQmlComponent component(&m_engine, view);
    if (Theme *theme = Theme::of(&m_engine)) {
        theme->setSnapshotRendering(true);
        theme->setReducedMotion(true);
    }
    QQuickWindow window;
    const std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    auto *item = qobject_cast<QQuickItem *>(made.get());
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    item->setSize(size);
    window.setColor(background(dark));
    window.setGeometry({QCursor::pos() + QPoint(1, 1), size}); // away from the pointer, which would open the panel
    window.show();
    letSettle(window);
    return write(window.grabWindow(), path);
}

} // namespace velto
