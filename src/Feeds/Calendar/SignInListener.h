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

/// The code in the first bytes of a browser's request, if they carry it together with this state. Method and path don't matter.
std::optional<QString> codeIn(const QByteArray &request, const QString &state);

/// Waits on a port of this machine for the browser to come back from a sign-in, and sends it off with a word of thanks. Whatever
/// else comes, such as a question for an icon or someone without the right state, gets no answer and ends nothing.
/// UI thread only.
class SignInListener : public QObject {
    Q_OBJECT
public:
    explicit SignInListener(QObject *parent = nullptr);
    /// Drops whoever has no answer. A wait goes on with nothing.
    ~SignInListener() override;

    /// Listens, and returns the port, which the system picks. Throws WorkError.
    quint16 start();
    /// Waits for the code of the sign-in with this state, however long it takes. Called once, after start().
    QCoro::Task<std::optional<QString>> callback(QString state);

private:
    struct Wait;

    void take(QTcpSocket *socket);
    void read(QTcpSocket *socket);

    QTcpServer m_server;
    QString m_state;
    std::optional<QString> m_code;
    std::coroutine_handle<> m_waiting;
};

} // namespace velto
