#include "Platform/Linux/ProcessFolderPanel.h"

#include "Platform/Linux/HelperProgram.h"

#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kGrace = 500; // ms

QStringList pathsIn(const QByteArray &answer)
{
    QStringList paths;
    const auto names = answer.split('\0');
    for (const auto &name : names)
        if (!name.isEmpty())
            paths.append(QFile::decodeName(name));
    return paths;
}

} // namespace

ProcessFolderPanel::ProcessFolderPanel(QString program, QObject *parent)
    : QObject(parent)
    , m_program(std::move(program))
{
}

ProcessFolderPanel::~ProcessFolderPanel()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->closeWriteChannel();
    m_process->waitForFinished(kGrace);
}

void ProcessFolderPanel::choose(const QString &prompt, std::function<void(QStringList)> chosen)
{
    if (m_process) {
        m_process->write("\n");
        return;
    }
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const auto ended = [this, chosen = std::move(chosen)](int code, QProcess::ExitStatus status) {
        const QStringList paths = pathsIn(m_process->readAllStandardOutput());
        m_process.release()->deleteLater(); // this runs in one of its own signals
        if (code == 0 && status == QProcess::NormalExit && !paths.isEmpty())
            chosen(paths);
    };
    connect(m_process.get(), &QProcess::finished, this, ended);
    const QString program = m_program.isEmpty() ? helperProgram(u"velto-folders"_s) : m_program;
    connect(m_process.get(), &QProcess::errorOccurred, this, [this, program](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        qWarning("velto-folders doesn't start: %s", qPrintable(m_process->errorString()));
        m_process.release()->deleteLater();
    });
    m_process->start(program, {prompt});
}

} // namespace velto
