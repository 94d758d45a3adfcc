#include "Platform/Posix/JsonDefaults.h"

#include "Platform/Clock.h"
#include "Platform/FileWriter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargest = 16 * 1024 * 1024;
constexpr std::chrono::milliseconds kThrough{500}; ///< a program that removes a whole folder has finished by then
const auto kDamaged = u".damaged-"_s;
constexpr auto kReal = "real"_L1;
constexpr auto kDate = "date"_L1;

QJsonValue encodedReal(double real)
{
    if (std::isfinite(real) && real != std::trunc(real))
        return real;
    return QJsonObject{{kReal, QString::number(real, 'g', 17)}};
}

/// Undefined for an invalid value, and for types that settings don't have.
QJsonValue encoded(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::Float:
    case QMetaType::Double:
        return encodedReal(value.toDouble());
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QStringList:
        return QJsonArray::fromStringList(value.toStringList());
    case QMetaType::QDateTime:
        if (!value.toDateTime().isValid())
            return QJsonValue::Undefined;
        return QJsonObject{{kDate, value.toDateTime().toUTC().toString(Qt::ISODateWithMs)}};
    default:
        return QJsonValue::Undefined;
    }
}

QVariant decodedObject(const QJsonObject &object)
{
    if (object.size() != 1)
        return {};
    const QString text = object.begin().value().toString();
    if (object.begin().key() == kReal) {
        bool valid = false;
        const double real = text.toDouble(&valid);
        return valid ? QVariant(real) : QVariant();
    }
    if (object.begin().key() == kDate) {
        const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
        return date.isValid() ? QVariant(date.toLocalTime()) : QVariant();
    }
    return {};
}

QVariant decodedList(const QJsonArray &array)
{
    QStringList list;
    for (const auto item : array) {
        if (!item.isString())
            return {};
        list.append(item.toString());
    }
    return list;
}

QVariant decoded(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Object:
        return decodedObject(value.toObject());
    case QJsonValue::Array:
        return decodedList(value.toArray());
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return {};
    default:
        return value.toVariant(); // a number is a qlonglong where it is a whole one
    }
}

void apply(const QHash<QString, QJsonValue> &changes, QJsonObject &values)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isUndefined())
            values.remove(change.key());
        else
            values.insert(change.key(), change.value());
    }
}

} // namespace

/// The file itself. Used on the writer's lane.
class SettingsFile {
public:
    struct State {
        QJsonObject values;
        QHash<QString, QJsonValue> changes;
        bool cleared = false;
        QDateTime now;
    };

    SettingsFile(Files &files, QString path)
        : m_files(files)
        , m_path(std::move(path))
    {
    }

    /// Sets `written` to what the file holds now.
    FileWriter::Outcome write(const State &state, QJsonObject &written);
    FileWriter::Outcome erase();

private:
    FileWriter::Outcome attempt(const State &state, QJsonObject &written, bool &overtaken);

    Files &m_files;
    QString m_path;
};

FileWriter::Outcome SettingsFile::write(const State &state, QJsonObject &written)
{
    constexpr int kAttempts = 5;
    FileWriter::Outcome outcome;
    bool overtaken = true;
    for (int tried = 0; overtaken && tried < kAttempts; ++tried)
        outcome = attempt(state, written, overtaken);
    return outcome;
}

FileWriter::Outcome SettingsFile::attempt(const State &state, QJsonObject &written, bool &overtaken)
{
    overtaken = false;
    FileWriter::Outcome outcome;
    const auto before = m_files.read(m_path, kLargest);
    const auto *unread = std::get_if<FileError>(&before);
    if (unread && !unread->missing)
        return {*unread, {}};
    written = state.values;
    if (!unread && !state.cleared) {
        const auto &bytes = std::get<QByteArray>(before);
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        if (document.isObject()) {
            written = document.object();
            apply(state.changes, written);
        } else if (!bytes.trimmed().isEmpty()) {
            const auto copy = keepCopy(m_files, m_path + kDamaged, state.now, bytes);
            if (const auto *error = std::get_if<FileError>(&copy))
                return {*error, {}};
            outcome.word = QCoreApplication::translate("JsonDefaults", "%1 couldn't be made out. It is kept as %2.")
                               .arg(QFileInfo(m_path).fileName(), QFileInfo(std::get<QString>(copy)).fileName());
        }
    }
    const auto unchanged = [&] {
        const auto now = m_files.read(m_path, kLargest);
        const auto *gone = std::get_if<FileError>(&now);
        overtaken = gone ? !(unread && gone->missing) : unread || std::get<QByteArray>(now) != std::get<QByteArray>(before);
        return !overtaken;
    };
    outcome.error = m_files.replace(m_path, QJsonDocument(written).toJson(), unchanged);
    return outcome;
}

FileWriter::Outcome SettingsFile::erase()
{
    m_files.sweep(m_path);
    const auto standing = m_files.read(m_path, kLargest);
    const auto *error = std::get_if<FileError>(&standing);
    FileWriter::Outcome outcome;
    if (!error || !error->missing)
        outcome.error = m_files.replace(m_path, "{}\n"); // emptied first: the folder may not allow files to be removed
    const QFileInfo file(m_path);
    QDir folder = file.dir();
    for (const QString &name : folder.entryList({file.fileName(), file.fileName() + kDamaged + u'*'}, QDir::Files | QDir::Hidden))
        folder.remove(name);
    QDir().rmdir(folder.path()); // fails if anything else is in it
    if (!file.exists())
        outcome.error.reset();
    return outcome;
}

JsonDefaults::JsonDefaults(Files &files, FileWriter &writer, Clock &clock, QString path)
    : m_writer(writer)
    , m_clock(clock)
    , m_path(std::move(path))
    , m_file(std::make_shared<SettingsFile>(files, m_path))
{
    load(files);
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_life, [this] {
        if (!m_values.isEmpty() && !QFileInfo::exists(m_path))
            m_restore = m_clock.after(kThrough, [this] { restore(); });
    });
    QObject::connect(&m_writer, &FileWriter::changed, &m_life, [this] {
        if (const QString problem = m_writer.problem(m_path); !problem.isEmpty())
            tellCleared(problem);
    });
    watch();
}

JsonDefaults::~JsonDefaults() = default;

void JsonDefaults::load(Files &files)
{
    keepPrivate();
    const auto content = files.read(m_path, kLargest);
    if (const auto *error = std::get_if<FileError>(&content)) {
        if (!error->missing)
            m_writer.say(
                m_path,
                QCoreApplication::translate("JsonDefaults", "%1 Velto starts with settings of its own.").arg(error->message));
        return;
    }
    const auto &bytes = std::get<QByteArray>(content);
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (document.isObject())
        m_values = document.object();
    else if (!bytes.trimmed().isEmpty())
        m_writer.say(m_path,
                     QCoreApplication::translate("JsonDefaults",
                                                 "%1 can't be made out, so Velto starts with settings of its "
                                                 "own. A copy is kept before anything is saved.")
                         .arg(QFileInfo(m_path).fileName()));
}

QVariant JsonDefaults::value(const QString &key) const
{
    return decoded(m_values.value(key));
}

void JsonDefaults::set(const QString &key, const QVariant &value)
{
    const QJsonValue wanted = encoded(value);
    if (m_values.value(key) == wanted)
        return;
    m_changes.insert(key, wanted);
    apply({{key, wanted}}, m_values);
    save();
}

void JsonDefaults::save()
{
    const auto written = std::make_shared<QJsonObject>();
    m_writer.write(
        m_path,
        [file = m_file, state = SettingsFile::State{m_values, m_changes, m_cleared, m_clock.wallTime()}, written] {
            return file->write(state, *written);
        },
        &m_life,
        [this, written] {
            m_values = *written;
            m_changes.clear();
            m_cleared = false;
            watch();
        });
}

/// Until the program ends it has all settings, and the next start should have them too.
void JsonDefaults::restore()
{
    if (!m_values.isEmpty() && !QFileInfo::exists(m_path))
        save();
}

void JsonDefaults::watch()
{
    const QString folder = QFileInfo(m_path).path();
    if (m_watcher.directories().isEmpty() && QFileInfo::exists(folder))
        m_watcher.addPath(folder);
}

void JsonDefaults::clear(std::function<void(const QString &)> cleared)
{
    m_tellCleared = std::move(cleared);
    m_values = {};
    m_changes.clear();
    m_cleared = true;
    m_writer.write(
        m_path, [file = m_file] { return file->erase(); }, &m_life,
        [this] {
            m_cleared = false;
            tellCleared({});
        });
}

void JsonDefaults::tellCleared(const QString &problem)
{
    if (const auto tell = std::exchange(m_tellCleared, {}))
        tell(problem);
}

void JsonDefaults::keepPrivate() const
{
    // The writer keeps an existing file's mode, and someone may have copied in a file with a wider one.
    constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner;
    constexpr QFile::Permissions kOthers =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if (QFileInfo(m_path).isFile() && (QFile::permissions(m_path) & kOthers))
        QFile::setPermissions(m_path, kOwner);
}

} // namespace velto
