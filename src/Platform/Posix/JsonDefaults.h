#pragma once

#include "Platform/Defaults.h"
#include "Platform/Timer.h"

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QHash>
#include <QJsonObject>
#include <memory>

namespace velto {

class Clock;
class FileWriter;
class Files;
class SettingsFile;

/// The user's settings in one JSON file that only the user can read, written by the FileWriter.
///
/// Bools, integers, text and lists of text are plain JSON, reals with a fraction too; a whole real is {"real": "2"} and a date
/// {"date": "2026-11-21T09:00:00.000Z"}, so that neither comes back as something else. Keys and values that this program doesn't
/// know stay in the file, and so does what another program changes there, except for keys that are set here. A file that can't
/// be parsed reads as empty and is copied aside (".damaged-" and the time) before it is overwritten; one that can't be read
/// at all is never overwritten, and one that is removed is written again.
class JsonDefaults final : public Defaults {
public:
    JsonDefaults(Files &files, FileWriter &writer, Clock &clock, QString path);
    ~JsonDefaults() override;

    QVariant value(const QString &key) const override;
    /// An invalid value forgets the key.
    void set(const QString &key, const QVariant &value) override;
    /// The file goes too, with the copies of damaged ones, and its folder if nothing else is in it.
    void clear(std::function<void(const QString &problem)> cleared) override;

private:
    void load(Files &files);
    void keepPrivate() const;
    void save();
    void restore();
    void watch();
    void tellCleared(const QString &problem);

    FileWriter &m_writer;
    Clock &m_clock;
    QString m_path;
    std::shared_ptr<SettingsFile> m_file; ///< on the writer's lane
    QJsonObject m_values;
    QHash<QString, QJsonValue> m_changes; ///< what the disk doesn't have yet; undefined where a key is forgotten
    bool m_cleared = false; ///< what the file holds is to go
    std::function<void(const QString &)> m_tellCleared;
    TimerHandle m_restore;
    QFileSystemWatcher m_watcher; ///< of the file's folder
    QObject m_life;
};

} // namespace velto
