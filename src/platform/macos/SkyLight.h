#pragma once

#include <QVariant>
#include <memory>
#include <optional>

namespace moorline {

/// The window server's private framework, of which nothing is linked: a system without it loses one answer and nothing
/// else.
class SkyLight final {
public:
    SkyLight();

    /// One dictionary for each display. Absent without the framework, without its functions, or without their answer.
    [[nodiscard]] std::optional<QVariantList> managedDisplaySpaces() const;

private:
    struct LibraryCloser {
        void operator()(void *library) const;
    };

    std::unique_ptr<void, LibraryCloser> m_library;
    void *const m_mainConnection;
    void *const m_copyManagedDisplaySpaces;
};

} // namespace moorline
