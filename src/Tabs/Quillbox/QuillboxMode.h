#pragma once

#include <QString>
#include <QUrl>
#include <functional>

namespace velto {

/// The connection to the user's memory: a database on this machine, a hub on the network, or none.
class QuillboxMode {
public:
    enum class Kind : quint8 { Local, Hub, Missing };
    /// What decides which connection there is.
    using Selection = std::function<QuillboxMode()>;

    QuillboxMode() = default; ///< missing
    static QuillboxMode local(const QString &dir) { return {Kind::Local, dir, {}, {}}; }
    static QuillboxMode hub(const QUrl &url, const QString &token) { return {Kind::Hub, {}, url, token}; }
    static QuillboxMode missing() { return {}; }

    /// The selection that the program runs with, the one place that decides: there is no connection, whatever is saved.
    static QuillboxMode current() { return missing(); }

    Kind kind() const { return m_kind; }
    bool isLocal() const { return m_kind == Kind::Local; }
    bool isHub() const { return m_kind == Kind::Hub; }
    bool isMissing() const { return m_kind == Kind::Missing; }
    /// Local: the folder of the Quillbox tool.
    const QString &dir() const { return m_dir; }
    /// Hub: its address.
    const QUrl &url() const { return m_url; }
    /// Hub: the secret that it knows the user by.
    const QString &token() const { return m_token; }

    /// One line for the user. `home` is the user's home folder, which is shortened to "~".
    QString label(const QString &home) const;

    bool operator==(const QuillboxMode &) const = default;

private:
    QuillboxMode(Kind kind, const QString &dir, const QUrl &url, const QString &token)
        : m_kind(kind)
        , m_dir(dir)
        , m_url(url)
        , m_token(token)
    {
    }

    Kind m_kind = Kind::Missing;
    QString m_dir;
    QUrl m_url;
    QString m_token;
};

} // namespace velto
