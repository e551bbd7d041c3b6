#import "platform/macos/MacAccessibility.h"

#import "platform/macos/Conversions.h"

#import <ApplicationServices/ApplicationServices.h>

namespace moorline {

namespace {

bool isElement(id object)
{
    return CFGetTypeID((__bridge CFTypeRef)object) == AXUIElementGetTypeID();
}

/// A thread of Qt's has no autorelease pool of its own, so that every question brings one.
class Element final : public AccessibilityElement {
public:
    explicit Element(id element)
        : m_element(element)
    {
    }

    void setMessagingTimeout(std::chrono::milliseconds timeout) override
    {
        m_timeout = timeout;
        AXUIElementSetMessagingTimeout(reference(), std::chrono::duration<float>(timeout).count());
    }

    [[nodiscard]] std::optional<List> elements(const QString &attribute) const override
    {
        @autoreleasepool {
            const id children = read(attribute);
            if (![children isKindOfClass:[NSArray class]])
                return std::nullopt;
            return fromArray(children);
        }
    }

    [[nodiscard]] QVariant value(const QString &attribute) const override
    {
        @autoreleasepool {
            const id object = read(attribute);
            if ([object isKindOfClass:[NSURL class]])
                return toQUrl(object);
            if ([object isKindOfClass:[NSString class]] || [object isKindOfClass:[NSNumber class]])
                return variantFrom(object);
            return {};
        }
    }

private:
    [[nodiscard]] AXUIElementRef reference() const { return (__bridge AXUIElementRef)m_element; }

    /// Nil when it cannot be read.
    [[nodiscard]] id read(const QString &attribute) const
    {
        CFTypeRef value = nullptr;
        const auto name = (__bridge CFStringRef)toNSString(attribute);
        const AXError error = AXUIElementCopyAttributeValue(reference(), name, &value);
        const id object = (__bridge_transfer id)value;
        return error == kAXErrorSuccess ? object : nil;
    }

    [[nodiscard]] std::optional<List> fromArray(NSArray *array) const
    {
        List result;
        for (id object in array) {
            if (!isElement(object))
                return std::nullopt;
            const auto child = std::make_shared<Element>(object);
            // A timeout holds for the very object it was set on.
            if (m_timeout)
                child->setMessagingTimeout(*m_timeout);
            result.append(child);
        }
        return result;
    }

    const id m_element;
    std::optional<std::chrono::milliseconds> m_timeout;
};

} // namespace

bool MacAccessibility::isProcessTrusted() const
{
    return AXIsProcessTrusted();
}

std::shared_ptr<AccessibilityElement> MacAccessibility::application(qint64 process) const
{
    return std::make_shared<Element>((__bridge_transfer id)AXUIElementCreateApplication(pid_t(process)));
}

} // namespace moorline
