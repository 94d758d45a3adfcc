#include "Settings/QuillboxSettings.h"

#include "Core/Prefs.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"

#include <QUrl>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kName = "Velto.quillbox"_L1;
/// Secrets that are forgotten together with Quillbox's.
constexpr std::array kOthers{"Velto.linear"_L1, "Velto.jira"_L1, "Velto.slack"_L1};

} // namespace

QuillboxSettings::QuillboxSettings(QuillboxSource &source, Prefs &prefs, Background &background, Keychain &keychain,
                                   QObject *parent)
    : QObject(parent)
    , m_source(source)
    , m_prefs(prefs)
    , m_keychain(background, keychain)
    , m_url(prefs.quillboxURL())
{
    connect(&m_source, &QuillboxSource::changed, this, &QuillboxSettings::changed);
}

QuillboxSettings::~QuillboxSettings()
{
    m_life.reset();
}

QString QuillboxSettings::status() const
{
    return m_source.modeLabel();
}

void QuillboxSettings::setUrl(const QString &url)
{
    if (url == m_url)
        return;
    m_url = url;
    Q_EMIT changed();
}

void QuillboxSettings::setToken(const QString &token)
{
    if (token == m_token)
        return;
    m_token = token;
    Q_EMIT changed();
}

/// Empty if the text isn't an address.
QUrl QuillboxSettings::address() const
{
    const QUrl url(m_url.trimmed(), QUrl::StrictMode);
    return url.isValid() && !url.scheme().isEmpty() ? url : QUrl();
}

bool QuillboxSettings::canTest() const
{
    return !m_testing && !address().isEmpty();
}

bool QuillboxSettings::canDisconnect() const
{
    return m_tokenSaved || !m_prefs.quillboxURL().isEmpty();
}

/// What must be changed in the address before anything is sent there; empty if it can be tried.
QString QuillboxSettings::addressFault() const
{
    const QUrl url = address();
    if ((url.scheme() != "https"_L1 && url.scheme() != "http"_L1) || url.host().isEmpty())
        return tr("The address starts with https:// or http://, and then comes the hub's name.");
    if (!url.password().isEmpty())
        return tr("Leave the password out of the address: it would stand in a file for all to read.");
    return {};
}

void QuillboxSettings::test()
{
    if (!canTest())
        return;
    if (const QString fault = addressFault(); !fault.isEmpty()) {
        m_succeeded = false;
        m_result = fault;
        Q_EMIT changed();
        return;
    }
    m_testing = true;
    Q_EMIT changed();
    tryOut(address(), m_token.trimmed());
}

QCoro::Task<> QuillboxSettings::tryOut(QUrl url, QString token)
{
    const std::weak_ptr life = m_life;
    const int attempt = ++m_attempt;
    if (token.isEmpty()) {
        token = (co_await m_keychain.get(kName)).value_or(QString());
        if (life.expired() || attempt != m_attempt)
            co_return;
    }
    const std::optional<QString> refusal = co_await m_source.client().test(url, token);
    if (life.expired() || attempt != m_attempt)
        co_return;
    m_testing = false;
    m_succeeded = !refusal;
    m_result = refusal.value_or(tr("Connected. Your todos will appear in Velto."));
    if (m_succeeded)
        co_await keep(url, token);
    else
        Q_EMIT changed();
}

QCoro::Task<> QuillboxSettings::keep(QUrl url, QString token)
{
    const std::weak_ptr life = m_life;
    m_prefs.setQuillboxURL(url.toString());
    m_url = url.toString();
    const bool kept = co_await m_keychain.put(kName, token);
    if (life.expired())
        co_return;
    // What couldn't be saved stays in its field, to be tried again.
    if (kept) {
        m_token.clear();
    } else {
        m_succeeded = false;
        m_result = tr("The hub answers, but the keyring couldn't keep the token. Unlock the keyring and try again.");
    }
    Q_EMIT changed();
    co_await look();
    if (!life.expired())
        m_source.reconnect();
}

void QuillboxSettings::disconnectHub()
{
    ++m_attempt;
    m_testing = false;
    m_prefs.setQuillboxURL({});
    m_url.clear();
    m_token.clear();
    m_result.clear();
    m_succeeded = false;
    Q_EMIT changed();
    forget();
}

QCoro::Task<> QuillboxSettings::forget()
{
    const std::weak_ptr life = m_life;
    co_await m_keychain.put(kName, std::nullopt);
    // One button forgets everything in the keyring under these names.
    for (const QString name : kOthers) {
        if (life.expired())
            co_return;
        co_await m_keychain.put(name, std::nullopt);
    }
    if (life.expired())
        co_return;
    co_await look();
    if (!life.expired())
        m_source.reconnect();
}

void QuillboxSettings::reread()
{
    look();
}

QCoro::Task<> QuillboxSettings::look()
{
    const std::weak_ptr life = m_life;
    const bool saved = (co_await m_keychain.get(kName)).has_value();
    if (life.expired() || saved == m_tokenSaved)
        co_return;
    m_tokenSaved = saved;
    Q_EMIT changed();
}

} // namespace velto
