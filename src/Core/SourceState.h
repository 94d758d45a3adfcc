#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

namespace velto {

/// The state of one data feed, as the user reads it.
class SourceState {
    Q_GADGET
    Q_PROPERTY(Kind kind READ kind FINAL)
    Q_PROPERTY(QString message READ message FINAL)
    Q_PROPERTY(QString reason READ reason FINAL)
    Q_PROPERTY(QString fix READ fix FINAL)
public:
    enum class Kind : int { // QML of Qt 6.4 reads an enum of a gadget as an int, whatever its size
        Ready, ///< the feed has current data
        Loading, ///< the first read is under way
        Failed, ///< the last read failed; message() says why
        Unavailable, ///< the feed can't work for now; reason() says why, fix() what to do
    };
    Q_ENUM(Kind)

    SourceState() = default; ///< ready
    static SourceState ready() { return {}; }
    static SourceState loading() { return {Kind::Loading, {}, {}}; }
    static SourceState failed(const QString &message) { return {Kind::Failed, message, {}}; }
    static SourceState unavailable(const QString &reason, const QString &fix) { return {Kind::Unavailable, reason, fix}; }

    /// Unavailable as long as the keyring isn't unlocked.
    static SourceState locked(const QString &reason, const QString &fix)
    {
        SourceState state = unavailable(reason, fix);
        state.m_locked = true;
        return state;
    }

    Kind kind() const { return m_kind; }
    QString message() const { return m_kind == Kind::Failed ? m_text : QString(); }
    QString reason() const { return m_kind == Kind::Unavailable ? m_text : QString(); }
    QString fix() const { return m_fix; }
    bool isLocked() const { return m_locked; }

    bool operator==(const SourceState &) const = default;

private:
    SourceState(Kind kind, const QString &text, const QString &fix)
        : m_kind(kind)
        , m_text(text)
        , m_fix(fix)
    {
    }

    Kind m_kind = Kind::Ready;
    QString m_text;
    QString m_fix;
    bool m_locked = false;
};

} // namespace velto
