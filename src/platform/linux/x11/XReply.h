#pragma once

#include <cstdlib>
#include <memory>

namespace moorline {

struct XReplyReleaser {
    void operator()(void *reply) const { std::free(reply); }
};

/// Owns a reply or an event that xcb allocated. Null where the server answered with an error, as it does for every
/// window that is gone by now.
template <typename T>
using XReply = std::unique_ptr<T, XReplyReleaser>;

} // namespace moorline
