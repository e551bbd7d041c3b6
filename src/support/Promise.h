#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

namespace moorline {

/// A value that comes later, once, and the one coroutine that waits for it. Copies stand for the same promise.
///
/// The first to resolve it wins; the coroutine goes on within that call. One that is never resolved never goes on.
template <typename T>
class Promise {
public:
    void resolve(T value) const
    {
        if (m_state->value)
            return;
        m_state->value = std::move(value);
        if (const auto waiting = std::exchange(m_state->waiting, nullptr))
            waiting.resume();
    }

    [[nodiscard]] bool await_ready() const { return m_state->value.has_value(); }
    void await_suspend(std::coroutine_handle<> waiting) const { m_state->waiting = waiting; }
    [[nodiscard]] T await_resume() const { return *m_state->value; }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> waiting;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace moorline
