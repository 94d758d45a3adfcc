#pragma once

#include "Platform/Defaults.h"

#include <QByteArray>
#include <QJsonObject>

namespace velto {

class Clock;
class Files;

/// The user's settings in one JSON file that only the user can read.
///
/// Bools, integers, text and lists of text are plain JSON, reals with a fraction too; a whole real is {"real": "2"} and a date
/// {"date": "2026-11-21T09:00:00.000Z"}, so that neither comes back as something else. Keys and values that this program doesn't
/// know stay in the file. A file that can't be understood reads as empty and is copied aside (".damaged-" and the time) before it
/// is written over; one that can't be read at all is never written over. What couldn't be written stays in memory and goes out
/// with the next set().
class JsonDefaults final : public Defaults {
public:
    JsonDefaults(Files &files, const Clock &clock, QString path);

    QVariant value(const QString &key) const override;
    /// An invalid value forgets the key.
    void set(const QString &key, const QVariant &value) override;
    /// The file goes too, with the copies of damaged ones, and its folder if nothing else stands in it.
    void clear() override;

private:
    void load();
    void keepPrivate() const;
    bool keepDamaged();
    void save();

    Files &m_files;
    const Clock &m_clock;
    QString m_path;
    QJsonObject m_values;
    QByteArray m_damaged; ///< what stands in the file, if it makes no sense
    bool m_unreadable = false; ///< what stands in the file isn't known
    bool m_unsaved = false;
};

} // namespace velto
