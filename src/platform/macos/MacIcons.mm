#import "platform/macos/MacIcons.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/MacImages.h"

#include <QFileInfo>

namespace moorline {

namespace {

/// Empty once nobody waits for it any more.
using SharedCompletion = std::shared_ptr<Icons::Completion>;

class Pending final : public Icons::Request {
public:
    explicit Pending(SharedCompletion completion)
        : m_completion(std::move(completion))
    {
    }
    ~Pending() override { *m_completion = nullptr; }

private:
    SharedCompletion m_completion;
};

/// A generic one for a path where there is nothing; nil for a name that is unknown.
NSImage *imageFor(const IconRequest &request)
{
    switch (request.kind) {
    case IconKind::application:
    case IconKind::file:
        return [NSWorkspace.sharedWorkspace iconForFile:toNSString(request.subject)];
    case IconKind::named:
        return [NSImage imageNamed:toNSString(request.subject)];
    }
    Q_UNREACHABLE();
}

void answer(const IconRequest &request, const SharedCompletion &completion)
{
    if (!*completion)
        return;
    NSImage *image = imageFor(request);
    const Icons::Completion call = std::exchange(*completion, nullptr);
    call(image ? rendered(image, {request.size, request.size}, request.scale) : QImage());
}

} // namespace

MacIcons::MacIcons(FileWatch &watch)
    : m_presence(watch, [](const QString &path) { return QFileInfo::exists(path); })
{
    connect(&m_presence, &FilePresence::changed, this, &Icons::themeChanged);
}

std::unique_ptr<Icons::Request> MacIcons::load(const IconRequest &request, Completion completion)
{
    if (request.kind == IconKind::file)
        m_presence.follow(request.subject);
    const auto shared = std::make_shared<Completion>(std::move(completion));
    QMetaObject::invokeMethod(
        this, [request, shared] { answer(request, shared); }, Qt::QueuedConnection);
    return std::make_unique<Pending>(shared);
}

} // namespace moorline
