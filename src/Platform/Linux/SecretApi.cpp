#include "Platform/Linux/SecretApi.h"

#include "Platform/Linux/OptionalLibrary.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace velto {

const SecretSchema *secretSchema()
{
    static const SecretSchema kSchema = [] {
        SecretSchema made{};
        made.name = kSecretSchema;
        made.flags = SECRET_SCHEMA_NONE;
        made.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return made;
    }();
    return &kSchema;
}

SecretApi::SecretApi()
{
    OptionalLibrary library(u"secret-1"_s, 0);
#define VELTO_RESOLVE(name) library.resolve(name, #name);
    VELTO_SECRET_FUNCTIONS(VELTO_RESOLVE)
#undef VELTO_RESOLVE
    complete = library.isComplete();
}

bool hasSessionBus()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const auto runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFile::exists(runtime + u"/bus"_s);
}

const SecretApi *secretApi()
{
    if (!hasSessionBus())
        return nullptr;
    static const SecretApi kApi;
    return kApi.complete ? &kApi : nullptr;
}

void freeError(const SecretApi &api, GError *error)
{
    if (error)
        api.g_error_free(error);
}

std::optional<QString> secretText(const SecretApi &api, SecretItem *item)
{
    auto *value = api.secret_item_get_secret(item);
    if (!value)
        return std::nullopt;
    gsize length = 0;
    const auto *bytes = api.secret_value_get(value, &length);
    const QByteArray utf8(bytes, qsizetype(length));
    api.secret_value_unref(value);
    auto text = QString::fromUtf8(utf8);
    return text.toUtf8() == utf8 ? std::optional(text) : std::nullopt;
}

} // namespace velto
