#include "HttpStandIn.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace velto {

namespace {

/// A certificate authority and one certificate for 127.0.0.1, created anew for each test program.
struct Authority {
    QSslCertificate root;
    QSslCertificate leaf;
    QSslKey key;
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void openssl(const QString &folder, const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral("openssl"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("openssl: %s", process.readAllStandardError().constData());
}

const Authority &authority()
{
    static const Authority made = [] {
        const QTemporaryDir folder;
        const auto words = [](const char *text) { return QString::fromLatin1(text).split(u' '); };
        openssl(folder.path(),
                words("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=test "
                      "-keyout root.key -out root.pem"));
        openssl(folder.path(),
                words("req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=127.0.0.1 "
                      "-addext subjectAltName=IP:127.0.0.1 -keyout leaf.key -out leaf.csr"));
        openssl(folder.path(),
                words("x509 -req -in leaf.csr -CA root.pem -CAkey root.key -CAcreateserial -days 2 "
                      "-copy_extensions copy -out leaf.pem"));
        return Authority{QSslCertificate(contents(folder.filePath(QStringLiteral("root.pem")))),
                         QSslCertificate(contents(folder.filePath(QStringLiteral("leaf.pem")))),
                         QSslKey(contents(folder.filePath(QStringLiteral("leaf.key"))), QSsl::Ec)};
    }();
    return made;
}

/// Takes the first complete request from `bytes`; nothing while it is incomplete.
std::optional<HttpStandIn::Request> takeRequest(QByteArray &bytes)
{
    const qsizetype end = bytes.indexOf("\r\n\r\n");
    if (end < 0)
        return {};
    QList<QByteArray> lines = bytes.first(end).split('\n');
    const QList<QByteArray> first = lines.takeFirst().trimmed().split(' ');
    HttpStandIn::Request request{first.value(0), first.value(1), {}, {}};
    for (const QByteArray &line : std::as_const(lines))
        request.headers.insert(line.left(line.indexOf(':')).toLower(), line.mid(line.indexOf(':') + 1).trimmed());
    const qsizetype length = request.headers.value("content-length").toLongLong();
    if (bytes.size() < end + 4 + length)
        return {};
    request.body = bytes.mid(end + 4, length);
    bytes.remove(0, end + 4 + length);
    return request;
}

void trickle(QTcpSocket *socket, const QByteArray &body)
{
    auto *timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket, [socket, timer, body, at = 0]() mutable {
        socket->write(body.mid(at++, 1));
        if (at >= body.size())
            timer->stop();
    });
    timer->start(20);
}

} // namespace

HttpStandIn::HttpStandIn(Security security)
    : m_security(security)
{
    if (security == Security::Tls) {
        QSslConfiguration tls;
        tls.setLocalCertificate(authority().leaf);
        tls.setPrivateKey(authority().key);
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(tls);
        m_server = std::move(server);
    } else
        m_server = std::make_unique<QTcpServer>();
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *socket = m_server->nextPendingConnection())
            serve(socket);
    });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("%s", qPrintable(m_server->errorString()));
}

HttpStandIn::~HttpStandIn() = default;

QUrl HttpStandIn::url(const QString &path) const
{
    const QString scheme = m_security == Security::Tls ? QStringLiteral("https") : QStringLiteral("http");
    return QUrl(QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(m_server->serverPort()).arg(path));
}

QSslConfiguration HttpStandIn::trust() const
{
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setCaCertificates({authority().root});
    return tls;
}

qsizetype HttpStandIn::connections() const
{
    return m_server->findChildren<QTcpSocket *>().size();
}

void HttpStandIn::serve(QTcpSocket *socket)
{
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); // otherwise the body waits 40 ms for the head to be acknowledged
    const auto read = [this, socket, bytes = QByteArray()]() mutable {
        bytes += socket->readAll();
        while (const std::optional<Request> request = takeRequest(bytes)) {
            requests.append(*request);
            reply(socket, *request);
        }
    };
    connect(socket, &QTcpSocket::readyRead, this, read);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
}

void HttpStandIn::reply(QTcpSocket *socket, const Request &request)
{
    const Answer said = answer(request);
    if (said.manner == Manner::Silent)
        return;
    if (said.manner == Manner::Hangup)
        return socket->disconnectFromHost();
    QByteArray head = "HTTP/1.1 " + QByteArray::number(said.status) + " Status\r\nContent-Type: application/json\r\n";
    for (const QByteArray &line : said.headers)
        head += line + "\r\n";
    socket->write(head + "Content-Length: " + QByteArray::number(said.body.size()) + "\r\n\r\n");
    switch (said.manner) {
    case Manner::CutOff:
        socket->write(said.body.first(said.body.size() / 2));
        socket->disconnectFromHost();
        break;
    case Manner::Trickle:
        trickle(socket, said.body);
        break;
    default:
        socket->write(said.body);
    }
}

} // namespace velto
