#pragma once

#include "Core/Result.h"
#include "Tabs/Quillbox/QuillboxMode.h"
#include "Tabs/Quillbox/VeltoSnapshot.h"

#include <QByteArray>
#include <QJsonObject>
#include <chrono>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Http;

/// Why a call to a hub failed.
struct HubError {
    static constexpr auto kDomain = "hub";
    static constexpr int kNotConnected = 0;
    static constexpr int kNotUnderstood = 0;
    static constexpr int kNoAnswer = -1;

    int code = 0; ///< one of the above, else the HTTP status
    QString text; ///< the sentence that the user reads

    bool operator==(const HubError &) const = default;
};

/// The one place that talks to a Quillbox hub. Keeps nothing and retries nothing. UI thread only; its tasks stay
/// valid when it is gone, and the caller checks after the co_await whether its own object still lives.
class QuillboxClient {
public:
    template <typename Value> using Answer = QCoro::Task<Result<Value, HubError>>;

    /// `http` and `background` outlive the client. `timeout` is how long a hub may stay silent.
    QuillboxClient(Http &http, Background &background, QuillboxMode::Selection selection = &QuillboxMode::current,
                   std::chrono::milliseconds timeout = std::chrono::seconds(10));

    /// The connection as it is selected now.
    QuillboxMode current() const { return m_selection(); }

    /// The body of the answer. `path` begins with a slash, `method` is "GET" or "POST"; `json` is sent if there is one.
    Answer<QByteArray> request(QString path, QByteArray method, std::optional<QJsonObject> json, QuillboxMode mode) const;
    /// What the selected hub knows.
    Answer<VeltoSnapshot> snapshot() const;
    /// Nothing if this hub accepts this token, otherwise why it doesn't. Changes nothing.
    QCoro::Task<std::optional<QString>> test(QUrl url, QString token) const;

private:
    Http &m_http;
    Background &m_background;
    QuillboxMode::Selection m_selection;
    std::chrono::milliseconds m_timeout;
};

} // namespace velto
