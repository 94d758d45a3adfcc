#include "Feeds/Calendar/SignInListener.h"

#include "Core/WorkError.h"

#include <QStringDecoder>
#include <QTcpSocket>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLongestRequest = 8192;
/// Connections that may wait unanswered; beyond that the oldest is dropped.
constexpr qsizetype kMostConnections = 32;

/// Reads whatever else has come: closing a socket with unread bytes resets it, and the browser might lose its answer.
void drain(QTcpSocket *socket)
{
    for (int i = 0; i < 64 && socket->waitForReadyRead(0); ++i)
        socket->readAll();
}

void answer(QTcpSocket *socket, bool connected)
{
    const QByteArray body = (connected ? SignInListener::tr("Google Calendar is connected. You can close this tab.")
                                       : SignInListener::tr("Google Calendar isn't connected. You can close this tab."))
                                .toUtf8();
    socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n"
                  + body);
    socket->flush();
    drain(socket);
    socket->disconnectFromHost();
}

} // namespace

SignInAnswer answerIn(const QByteArray &request, const QString &state)
{
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decode(request);
    if (decode.hasError())
        return {};
    const QString line = text.split(u'\n', Qt::SkipEmptyParts).value(0);
    const QString target = line.split(u' ', Qt::SkipEmptyParts).value(1);
    const QUrl url("http://localhost"_L1 + target);
    if (target.isEmpty() || !url.isValid())
        return {};
    const QUrlQuery query(url);
    if (state.isEmpty() || query.queryItemValue(u"state"_s, QUrl::FullyDecoded) != state)
        return {};
    const QString code = query.queryItemValue(u"code"_s, QUrl::FullyDecoded);
    if (!code.isEmpty())
        return {code, std::nullopt};
    const QString error = query.queryItemValue(u"error"_s, QUrl::FullyDecoded);
    return {std::nullopt, error.isEmpty() ? std::nullopt : std::optional(error)};
}

struct SignInListener::Wait {
    SignInListener &listener;

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting) const { listener.m_waiting = waiting; }
    void await_resume() const { }
};

SignInListener::SignInListener(QObject *parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection())
            take(socket);
    });
}

SignInListener::~SignInListener()
{
    if (m_waiting)
        std::exchange(m_waiting, {}).resume();
}

quint16 SignInListener::start()
{
    // On every interface: only the redirect address, which the browser gets, is limited to this machine.
    if (!m_server.listen(QHostAddress::Any))
        throw WorkError{m_server.errorString()};
    return m_server.serverPort();
}

QCoro::Task<SignInAnswer> SignInListener::callback(QString state)
{
    m_state = state;
    co_await Wait{*this};
    co_return std::exchange(m_answer, {});
}

void SignInListener::cancel()
{
    if (m_waiting)
        std::exchange(m_waiting, {}).resume();
}

void SignInListener::take(QTcpSocket *socket)
{
    const auto sockets = m_server.findChildren<QTcpSocket *>();
    if (sockets.size() > kMostConnections)
        delete sockets.front();
    // Whatever isn't read stays with the sender.
    socket->setReadBufferSize(kLongestRequest);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(
        socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); },
        Qt::ConnectionType(Qt::AutoConnection | Qt::SingleShotConnection));
}

void SignInListener::read(QTcpSocket *socket)
{
    if (!m_waiting)
        return;
    m_answer = answerIn(socket->read(kLongestRequest), m_state);
    if (m_answer == Answer{})
        return;
    answer(socket, m_answer.code.has_value());
    std::exchange(m_waiting, {}).resume();
}

} // namespace velto
