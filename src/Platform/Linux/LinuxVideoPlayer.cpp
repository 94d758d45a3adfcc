#include "Platform/Linux/LinuxVideoPlayer.h"

#include "Platform/Linux/HelperProgram.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTimer>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kGrace = 500; // ms
constexpr int kLongGrace = 2000; // ms

QJsonObject written(const QRect &place)
{
    return {{u"x"_s, place.x()}, {u"y"_s, place.y()}, {u"width"_s, place.width()}, {u"height"_s, place.height()}};
}

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

LinuxVideoPlayer::LinuxVideoPlayer(QStringList places, QObject *parent)
    : VideoPlayer(parent)
    , m_places(std::move(places))
{
}

LinuxVideoPlayer::~LinuxVideoPlayer()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->closeWriteChannel();
    m_process->waitForFinished(kGrace);
}

QString LinuxVideoPlayer::program() const
{
    if (m_places.isEmpty())
        return helperProgram(u"velto-video"_s);
    for (const QString &path : m_places) {
        if (QFileInfo(path).isExecutable())
            return path;
    }
    return {};
}

bool LinuxVideoPlayer::installed() const
{
    // The player's window is embedded in the panel's by its X11 window id.
    return QGuiApplication::platformName() == u"xcb"_s && !program().isEmpty();
}

void LinuxVideoPlayer::open(const QString &html, const QUrl &base, quintptr window, const QRect &place)
{
    close();
    m_place = place;
    m_process = std::make_unique<QProcess>();
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    const auto ended = [this](bool asUserWanted) {
        if (!m_process)
            return;
        m_process.release()->deleteLater(); // this may run in one of its own signals
        asUserWanted ? Q_EMIT closeWanted() : Q_EMIT failed();
    };
    connect(m_process.get(), &QProcess::finished, this,
            [ended](int code, QProcess::ExitStatus status) { ended(status == QProcess::NormalExit && code == 0); });
    connect(m_process.get(), &QProcess::errorOccurred, this, [ended](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended(false);
    });
    m_process->start(program(), {});
    if (!m_process) // it failed to start, which has been reported
        return;
    QJsonObject first = written(place);
    first.insert(u"html"_s, html);
    first.insert(u"base"_s, base.toString());
    first.insert(u"parent"_s, double(window));
    m_process->write(lineOf(first));
}

void LinuxVideoPlayer::move(const QRect &place)
{
    if (!m_process || place == m_place)
        return;
    m_place = place;
    m_process->write(lineOf(written(place)));
}

void LinuxVideoPlayer::close()
{
    if (!m_process)
        return;
    // The end of its input removes its window at once; the engine ends later.
    QProcess *const process = m_process.release();
    process->setParent(this);
    process->disconnect(this);
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    process->closeWriteChannel();
    QTimer::singleShot(kLongGrace, process, &QProcess::kill);
}

} // namespace velto
