#include "theme/IconCache.h"

#include <QPointer>

namespace moorline {

namespace {

/// What an entry takes beside its pixels, so that icons that are missing do not pile up either.
constexpr qsizetype overhead = 512;

} // namespace

class IconCache::Waiter final : public Waiting {
public:
    Waiter(IconCache &cache, IconRequest request, SharedCompletion completion)
        : m_cache(&cache)
        , m_request(std::move(request))
        , m_completion(std::move(completion))
    {
    }
    ~Waiter() override
    {
        *m_completion = nullptr;
        if (m_cache)
            m_cache->leave(m_request);
    }

private:
    QPointer<IconCache> m_cache;
    IconRequest m_request;
    SharedCompletion m_completion;
};

IconCache::IconCache(Icons &icons, qsizetype capacity, QObject *parent)
    : QObject(parent)
    , m_icons(icons)
    , m_images(capacity)
{
    connect(&icons, &Icons::themeChanged, this, &IconCache::forget);
}

IconCache::~IconCache() = default;

std::optional<QImage> IconCache::known(const IconRequest &request) const
{
    const QImage *image = m_images.object(request);
    return image ? std::optional(*image) : std::nullopt;
}

std::unique_ptr<IconCache::Waiting> IconCache::load(const IconRequest &request, Completion completion)
{
    auto shared = std::make_shared<Completion>(std::move(completion));
    const bool isAsked = m_questions.contains(request);
    m_questions[request].waiting.append(shared);
    if (!isAsked)
        ask(request);
    return std::make_unique<Waiter>(*this, request, std::move(shared));
}

void IconCache::ask(const IconRequest &request)
{
    m_questions[request].request =
        m_icons.load(request, [this, request](const QImage &icon) { deliver(request, icon); });
}

void IconCache::deliver(const IconRequest &request, const QImage &icon)
{
    m_images.insert(request, new QImage(icon), icon.sizeInBytes() + overhead);
    // The question is over before anybody hears of it: who is told may ask again, let others go, or end the cache.
    const auto question = m_questions.extract(request);
    for (const SharedCompletion &completion : std::as_const(question.mapped().waiting)) {
        if (const Completion call = std::exchange(*completion, nullptr))
            call(icon);
    }
}

void IconCache::leave(const IconRequest &request)
{
    const auto question = m_questions.find(request);
    if (question == m_questions.end())
        return;
    question->second.waiting.removeIf([](const SharedCompletion &completion) { return !*completion; });
    if (question->second.waiting.isEmpty())
        m_questions.erase(question);
}

void IconCache::forget()
{
    m_images.clear();
    for (auto &[request, question] : m_questions)
        ask(request);
    Q_EMIT iconsChanged();
}

} // namespace moorline
