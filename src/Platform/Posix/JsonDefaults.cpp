#include "Platform/Posix/JsonDefaults.h"

#include "Platform/Clock.h"
#include "Platform/Files.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargest = 16 * 1024 * 1024;
constexpr auto kDamaged = ".damaged-"_L1;
constexpr auto kReal = "real"_L1;
constexpr auto kDate = "date"_L1;

QJsonValue encodedReal(double real)
{
    if (std::isfinite(real) && real != std::trunc(real))
        return real;
    return QJsonObject{{kReal, QString::number(real, 'g', 17)}};
}

/// Undefined for an invalid value, and for what has no place in the settings.
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

} // namespace

JsonDefaults::JsonDefaults(Files &files, const Clock &clock, QString path)
    : m_files(files)
    , m_clock(clock)
    , m_path(std::move(path))
{
    load();
}

void JsonDefaults::load()
{
    keepPrivate();
    const auto content = m_files.read(m_path, kLargest);
    if (const auto *error = std::get_if<FileError>(&content)) {
        m_unreadable = !error->missing;
        return;
    }
    m_unreadable = false;
    const auto &bytes = std::get<QByteArray>(content);
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        m_damaged = bytes;
        return;
    }
    // After a late first reading, what was set meanwhile goes before what the file says.
    QJsonObject values = document.object();
    for (auto own = m_values.constBegin(); own != m_values.constEnd(); ++own)
        values.insert(own.key(), own.value());
    m_values = values;
}

QVariant JsonDefaults::value(const QString &key) const
{
    return decoded(m_values.value(key));
}

void JsonDefaults::set(const QString &key, const QVariant &value)
{
    const QJsonValue wanted = encoded(value);
    if (m_values.value(key) != wanted) {
        if (wanted.isUndefined())
            m_values.remove(key);
        else
            m_values.insert(key, wanted);
        m_unsaved = true;
    }
    if (m_unsaved)
        save();
}

void JsonDefaults::clear()
{
    m_values = {};
    // Everything is to go, whatever it was.
    m_unreadable = false;
    m_damaged.clear();
    m_unsaved = true;
    save(); // emptied first, for a folder that lets no file go
    const QFileInfo file(m_path);
    QDir folder = file.dir();
    for (const QString &name : folder.entryList({file.fileName(), file.fileName() + kDamaged + u'*'}, QDir::Files | QDir::Hidden))
        folder.remove(name);
    QDir().rmdir(folder.path()); // unless something else stands in it
}

void JsonDefaults::keepPrivate() const
{
    // The writer keeps the mode of a file that stands there, and somebody may have copied one in with a wider one.
    constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner;
    constexpr QFile::Permissions kOthers =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if (QFile::permissions(m_path) & kOthers)
        QFile::setPermissions(m_path, kOwner);
}

bool JsonDefaults::keepDamaged()
{
    constexpr int kAttempts = 100;
    const QString stamp = m_clock.wallTime().toUTC().toString(Qt::ISODate).replace(':'_L1, '-'_L1);
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        const QString suffix = attempt == 1 ? QString() : u"-%1"_s.arg(attempt);
        const QString copy = m_path + kDamaged + stamp + suffix;
        const auto standing = m_files.read(copy, 0);
        const auto *error = std::get_if<FileError>(&standing);
        if (error && error->missing)
            return !m_files.replace(copy, m_damaged);
    }
    return false;
}

void JsonDefaults::save()
{
    if (m_unreadable)
        load();
    if (m_unreadable)
        return;
    if (!m_damaged.trimmed().isEmpty() && !keepDamaged())
        return;
    m_damaged.clear();
    if (!m_files.replace(m_path, QJsonDocument(m_values).toJson()))
        m_unsaved = false;
}

} // namespace velto
