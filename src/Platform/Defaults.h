#pragma once

#include <QString>
#include <QVariant>
#include <functional>

namespace velto {

/// The user's settings, by key. Types survive: a bool comes back as a bool, an integer as an integer (qlonglong), a real as a
/// double, a list of text as QStringList, a date as QDateTime. A write reaches the disk shortly afterwards. UI thread only.
class Defaults {
public:
    Defaults() = default;
    Defaults(const Defaults &) = delete;
    Defaults &operator=(const Defaults &) = delete;
    virtual ~Defaults() = default;

    /// The stored value; an invalid QVariant if there is none.
    virtual QVariant value(const QString &key) const = 0;
    virtual void set(const QString &key, const QVariant &value) = 0;
    /// Forgets everything. `cleared` gets why the disk still has it, in a sentence, or nothing once it hasn't.
    virtual void clear(std::function<void(const QString &problem)> cleared) = 0;
};

} // namespace velto
