#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace velto {

/// Reads the one HTTP request of a hook connection, piece by piece as it arrives. Knows no socket and no event loop; takes any
/// bytes, and holds no more than kMaxSize and one piece of them. Everything is judged on the header alone, so that a refused
/// request gets its answer before its body has come.
class HookRequest {
public:
    /// Header and body together.
    static constexpr qsizetype kMaxSize = 256'000;

    enum class State : quint8 {
        More, ///< feed it further
        Complete, ///< path() and body() are there
        Refused, ///< not a hook's call: 403
        TooLarge, ///< 413
        Broken, ///< the sender stopped within the header: no reply
    };
    enum class Path : quint8 { Event, Permission };

    explicit HookRequest(QByteArray token);

    /// Takes the next bytes; `finished` says that none will follow. Once the answer is anything but More, it stays that.
    State feed(QByteArrayView bytes, bool finished);

    State state() const { return m_state; }
    Path path() const { return m_path; }
    /// All that came after the header, even if it is more or less than was announced. Good until the next feed() or release().
    QByteArrayView body() const { return QByteArrayView(m_buffer).sliced(m_bodyStart); }
    /// The sender announced less than it sent, or was judged early: more may be on its way.
    bool mayHaveMore() const;
    /// Frees the memory.
    void release();

private:
    State judge(bool finished);
    bool acceptHeader(QByteArrayView header);
    bool acceptRequestLine(QByteArrayView line);

    QByteArray m_token;
    QByteArray m_buffer;
    qsizetype m_searched = 0; ///< no end of the header starts before this
    qsizetype m_bodyStart = 0; ///< 0 until the header has been read
    qsizetype m_bodyLength = 0; ///< as announced; may be negative
    Path m_path = Path::Event;
    State m_state = State::More;
};

/// The whole reply, for a status such as "204 No Content".
QByteArray hookReply(QByteArrayView status, QByteArrayView body = {});
/// The reply to a permission question: allow, deny, or no decision, which leaves the question to the terminal.
QByteArray permissionReply(std::optional<bool> decision);

} // namespace velto
