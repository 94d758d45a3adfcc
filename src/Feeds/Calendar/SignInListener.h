#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <coroutine>
#include <optional>
#include <qcoro/qcorotask.h>

class QTcpSocket;

namespace velto {

/// What a browser brings back: the code, or why there is none (RFC 6749, 4.1.2).
struct SignInAnswer {
    std::optional<QString> code;
    std::optional<QString> error;
    bool operator==(const SignInAnswer &) const = default;
};

/// The answer in the first bytes of a browser's request, if they carry one together with this state. Method and path don't
/// matter.
SignInAnswer answerIn(const QByteArray &request, const QString &state);

/// Waits on a port of this machine for the browser to come back from a sign-in, and thanks the user there. Whatever
/// else comes, such as a request for an icon or one without the right state, gets no answer and ends nothing.
/// UI thread only.
class SignInListener : public QObject {
    Q_OBJECT
public:
    explicit SignInListener(QObject *parent = nullptr);
    /// Drops connections that have no answer yet. A pending wait continues with nothing.
    ~SignInListener() override;

    /// Listens, and returns the port, which the system picks. Throws WorkError.
    quint16 start();
    using Answer = SignInAnswer;
    /// Waits for the answer to the sign-in with this state, however long it takes; an empty one if it is given up. Called once,
    /// after start().
    QCoro::Task<Answer> callback(QString state);
    /// Gives up waiting.
    void cancel();

private:
    struct Wait;

    void take(QTcpSocket *socket);
    void read(QTcpSocket *socket);

    QTcpServer m_server;
    QString m_state;
    Answer m_answer;
    std::coroutine_handle<> m_waiting;
};

} // namespace velto
