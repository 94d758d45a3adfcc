#pragma once

#include "Platform/LoginItem.h"

#include <QByteArray>
#include <QString>

namespace velto {

class Files;

/// `program` as the value of a desktop entry's Exec key.
QByteArray desktopExec(const QString &program);
/// Whether this desktop entry starts `program` at login.
bool startsAtLogin(const QByteArray &entry, const QString &program);

/// Our entry in the user's autostart folder.
class AutostartLoginItem final : public LoginItem {
public:
    /// `configuration` is the folder of the desktop's own files (XDG_CONFIG_HOME), `program` the absolute path to start.
    AutostartLoginItem(Files &files, const QString &configuration, QString program);

    bool enabled() const override;
    bool set(bool on) override;
    QString problem() const override { return m_problem; }

private:
    Files &m_files;
    QString m_path;
    QString m_program;
    QString m_problem;
};

} // namespace velto
