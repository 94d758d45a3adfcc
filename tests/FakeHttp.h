#pragma once

#include "Core/Http.h"

#include <functional>

namespace velto {

/// A network on which every service answers at once with what the test sets.
class FakeHttp final : public Http {
public:
    std::function<HttpReply(const HttpRequest &)> answer = [](const HttpRequest &) { return HttpReply{}; };
    QList<HttpRequest> requests;

    QCoro::Task<HttpReply> send(HttpRequest request) override
    {
        requests.append(request);
        co_return answer(request);
    }
};

} // namespace velto
