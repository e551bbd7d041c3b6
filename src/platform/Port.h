#pragma once

#include <concepts>
#include <memory>
#include <utility>

namespace moorline {

/// Owns the adapter of a port. There always is one: a Port cannot be left out where it is a member, nor be null.
///
/// Made by makePort(). One that was moved from can only be destroyed.
template <typename T>
class Port final {
public:
    Port() = delete;
    /// The adapter as the port that it implements.
    template <std::derived_from<T> Adapter>
    Port(Port<Adapter> &&other) noexcept
        : m_adapter(std::move(other.m_adapter))
    {
    }

    [[nodiscard]] T &operator*() const { return *m_adapter; }
    [[nodiscard]] T *operator->() const { return m_adapter.get(); }
    [[nodiscard]] T *get() const { return m_adapter.get(); }

private:
    template <typename>
    friend class Port;
    template <typename Adapter, typename... Arguments>
    friend Port<Adapter> makePort(Arguments &&...arguments);

    explicit Port(std::unique_ptr<T> adapter)
        : m_adapter(std::move(adapter))
    {
    }

    std::unique_ptr<T> m_adapter;
};

/// Builds an adapter.
template <typename Adapter, typename... Arguments>
[[nodiscard]] Port<Adapter> makePort(Arguments &&...arguments)
{
    return Port<Adapter>(std::make_unique<Adapter>(std::forward<Arguments>(arguments)...));
}

} // namespace moorline
