#include "Platform/Linux/AutostartLoginItem.h"

#include "Platform/Files.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <optional>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargestEntry = 64 * 1024;

/// The value of a key in the entry's main group, still escaped.
std::optional<QByteArray> entryValue(const QByteArray &entry, QByteArrayView key)
{
    bool inside = false;
    for (const auto &raw : entry.split('\n')) {
        const auto line = raw.trimmed();
        if (line.startsWith('['))
            inside = line == "[Desktop Entry]";
        else if (const auto equals = line.indexOf('='); inside && equals > 0 && line.first(equals).trimmed() == key)
            return line.sliced(equals + 1).trimmed();
    }
    return std::nullopt;
}

/// Escapes a text for a desktop file.
QByteArray desktopString(const QString &text)
{
    return text.toUtf8().replace('\\', "\\\\").replace('\n', "\\n");
}

} // namespace

/// Two layers: an argument in double quotes with `"`, backtick, `$` and `\` escaped, and `%` doubled; then the backslashes once
/// more, as in every string of a desktop file (Desktop Entry Specification 1.5, "The Exec key").
QByteArray desktopExec(const QString &program)
{
    QByteArray quoted = "\"";
    for (const char c : program.toUtf8()) {
        if (c == '"' || c == '`' || c == '$' || c == '\\')
            quoted += '\\';
        else if (c == '%')
            quoted += '%';
        quoted += c;
    }
    quoted += '"';
    quoted.replace('\\', "\\\\");
    // A line feed in a path can only be written as an escape; as it is, it would start a new line.
    quoted.replace('\n', "\\n");
    return quoted;
}

bool startsAtLogin(const QByteArray &entry, const QString &program)
{
    const auto exec = entryValue(entry, "Exec");
    if (!exec || entryValue(entry, "Hidden") == "true" || entryValue(entry, "X-GNOME-Autostart-enabled") == "false")
        return false;
    // A path that needs no quotation marks may come without them.
    return *exec == desktopExec(program) || *exec == program.toUtf8();
}

AutostartLoginItem::AutostartLoginItem(Files &files, const QString &configuration, QString program)
    : m_files(files)
    , m_path(configuration + u"/autostart/velto.desktop"_s)
    , m_program(std::move(program))
{
}

bool AutostartLoginItem::enabled() const
{
    const auto file = m_files.read(m_path, kLargestEntry);
    const auto *entry = std::get_if<QByteArray>(&file);
    return entry && startsAtLogin(*entry, m_program);
}

bool AutostartLoginItem::set(bool on)
{
    m_problem.clear();
    if (on) {
        const auto error = m_files.replace(
            m_path,
            "[Desktop Entry]\nType=Application\nName=Velto\nIcon=" VELTO_APPLICATION_ID "\nTryExec=" + desktopString(m_program)
                + "\nExec=" + desktopExec(m_program) + "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
        if (error)
            m_problem = error->message;
    } else if (QFile file(m_path); file.exists() && !file.remove()) {
        m_problem = QCoreApplication::translate("AutostartLoginItem", "%1 can't be removed: %2.")
                        .arg(QFileInfo(m_path).fileName(), file.errorString());
    }
    return enabled();
}

} // namespace velto
