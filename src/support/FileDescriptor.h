#pragma once

#include <unistd.h>
#include <utility>

namespace moorline {

/// Owns an open file descriptor, or none.
class FileDescriptor final {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, none))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor() { close(); }

    void close()
    {
        if (isOpen())
            ::close(std::exchange(m_descriptor, none));
    }

    [[nodiscard]] bool isOpen() const { return m_descriptor != none; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    static constexpr int none = -1;

    int m_descriptor = none;
};

} // namespace moorline
