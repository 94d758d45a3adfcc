// velto-video: plays one video inside another program's window. The panel starts it when a video is first opened and ends it
// with the sheet, so the browser engine costs nothing before and nothing after.
//
// Standard input: first a JSON line {"html": text, "base": address, "parent": window, "x", "y", "width", "height": device
// pixels within it}; each further line {"x", "y", "width", "height"} moves it. It exits at the end of its input, and on Escape
// with status 0.
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSocketNotifier>
#include <QtWebEngineQuick>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QJsonObject parsed(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object();
}

QRect placeIn(const QJsonObject &line)
{
    return {line["x"_L1].toInt(), line["y"_L1].toInt(), line["width"_L1].toInt(), line["height"_L1].toInt()};
}

/// Window geometry is in the toolkit's pixels, the input in the display's.
void place(QWindow &window, const QRect &device)
{
    const double ratio = window.devicePixelRatio();
    window.setGeometry(qRound(device.x() / ratio), qRound(device.y() / ratio), qRound(device.width() / ratio),
                       qRound(device.height() / ratio));
}

/// The display gives the keys to the window under the pointer, even while the panel around it has the keyboard. Escape ends the
/// video then too; any other key was meant for the video, so it takes the keyboard.
class StrayKeys final : public QObject {
public:
    explicit StrayKeys(QWindow &window)
        : m_window(window)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && !m_window.isActive()) {
            if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
                QGuiApplication::quit();
            else
                m_window.requestActivate();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWindow &m_window;
};

std::optional<QByteArray> readFirstLine()
{
    QByteArray line;
    for (char next = 0; line.size() < 1'000'000 && ::read(STDIN_FILENO, &next, 1) == 1;) {
        if (next == '\n')
            return line;
        line += next;
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char **argv)
{
    const auto first = readFirstLine();
    if (!first) {
        std::fputs("velto-video is started by velto\n", stderr);
        return 1;
    }
    const QJsonObject request = parsed(*first);

    QtWebEngineQuick::initialize();
    QGuiApplication::setApplicationName(u"velto-video"_s);
    QGuiApplication application(argc, argv);

    QQuickView view;
    view.setColor(Qt::black);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setInitialProperties({{u"html"_s, request["html"_L1].toString()}, {u"base"_s, QUrl(request["base"_L1].toString())}});
    view.setSource(QUrl(u"qrc:/Player.qml"_s));
    QObject::connect(view.engine(), &QQmlEngine::quit, &application, &QGuiApplication::quit, Qt::QueuedConnection);
    if (view.status() != QQuickView::Ready)
        return 1;
    if (const auto parent = WId(request["parent"_L1].toDouble()); parent != 0)
        view.setParent(QWindow::fromWinId(parent));
    place(view, placeIn(request));
    StrayKeys strayKeys(view);
    view.show();

    QByteArray pending;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        std::array<char, 4096> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) {
            view.hide(); // hidden first: the engine needs time to end
            return QGuiApplication::quit();
        }
        pending.append(bytes.data(), count);
        for (qsizetype end = 0; (end = pending.indexOf('\n')) >= 0; pending.remove(0, end + 1))
            place(view, placeIn(parsed(pending.first(end))));
    });
    return QGuiApplication::exec();
}
