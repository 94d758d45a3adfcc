// Any bytes as a hook request, at once and in pieces: the verdict and the body are the same, and nothing is accepted without
// the secret.

#include "Hooks/HookRequest.h"

#include <cstdlib>
#include <utility>

using velto::HookRequest;

namespace {

const QByteArray kToken = "0123456789abcdef0123456789abcdef";

void require(bool holds)
{
    if (!holds)
        std::abort();
}

std::pair<HookRequest::State, QByteArray> read(QByteArrayView bytes, qsizetype piece)
{
    HookRequest request(kToken);
    // Once it is complete, the rest of a longer body stays unread: only complete reads can be compared then.
    while (!bytes.isEmpty() && request.state() == HookRequest::State::More) {
        const auto next = bytes.first(std::min(piece, bytes.size()));
        bytes = bytes.sliced(next.size());
        request.feed(next, false);
    }
    if (request.state() == HookRequest::State::More)
        request.feed({}, true);
    require(request.state() != HookRequest::State::More);
    if (request.state() != HookRequest::State::Complete)
        return {request.state(), {}};
    return {request.state(), request.body().toByteArray()};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const auto [state, body] = read(bytes, HookRequest::kMaxSize + 1);
    if (bytes.size() > HookRequest::kMaxSize) {
        require(state == HookRequest::State::TooLarge); // in pieces, its header may be judged first
        return 0;
    }
    const auto piece = size == 0 ? 1 : 1 + data[size - 1] % 61;
    const auto [stateInPieces, bodyInPieces] = read(bytes, piece);
    require(state == stateInPieces);
    require(body.startsWith(bodyInPieces));
    if (state == HookRequest::State::Complete) {
        require(bytes.indexOf(kToken) >= 0);
        require(bytes.endsWith(body));
        require(bytes.trimmed().startsWith("POST "));
    }
    return 0;
}
