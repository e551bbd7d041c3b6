#import "platform/macos/SkyLight.h"

#import "platform/macos/Conversions.h"

#include <dlfcn.h>

namespace moorline {

namespace {

constexpr auto frameworkPath = "/System/Library/PrivateFrameworks/SkyLight.framework/SkyLight";

using MainConnection = int32_t (*)();
/// The caller owns the array.
using CopyManagedDisplaySpaces = CFArrayRef (*)(int32_t connection);

void *symbol(void *library, const char *name)
{
    return library ? dlsym(library, name) : nullptr;
}

} // namespace

void SkyLight::LibraryCloser::operator()(void *library) const
{
    dlclose(library);
}

SkyLight::SkyLight()
    : m_library(dlopen(frameworkPath, RTLD_LAZY))
    , m_mainConnection(symbol(m_library.get(), "SLSMainConnectionID"))
    , m_copyManagedDisplaySpaces(symbol(m_library.get(), "SLSCopyManagedDisplaySpaces"))
{
}

std::optional<QVariantList> SkyLight::managedDisplaySpaces() const
{
    if (!m_mainConnection || !m_copyManagedDisplaySpaces)
        return std::nullopt;
    const auto connection = reinterpret_cast<MainConnection>(m_mainConnection)();
    NSArray *spaces =
        (__bridge_transfer NSArray *)reinterpret_cast<CopyManagedDisplaySpaces>(m_copyManagedDisplaySpaces)(connection);
    if (![spaces isKindOfClass:[NSArray class]])
        return std::nullopt;
    return variantFrom(spaces).toList();
}

} // namespace moorline
