#include "platform/linux/icons/ThemedIcons.h"

#include "platform/linux/icons/FileKinds.h"
#include "platform/linux/icons/IconThread.h"
#include "platform/linux/icons/SessionIconTheme.h"

#include <QPointer>

namespace moorline {

namespace {

/// Installing a program touches many folders, one after the other.
constexpr std::chrono::seconds quietTime{1};

} // namespace

class ThemedIcons::Pending final : public Request {
public:
    Pending(ThemedIcons &icons, quint64 id, Completion completion)
        : m_icons(&icons)
        , m_id(id)
        , m_completion(std::move(completion))
    {
    }
    ~Pending() override
    {
        m_abandoned->store(true);
        if (m_icons)
            m_icons->m_waiting.remove(m_id);
    }

    [[nodiscard]] const IconWorker::Abandoned &abandoned() const { return m_abandoned; }
    /// The completion, to be called when this may be gone.
    [[nodiscard]] Completion release() { return std::exchange(m_completion, nullptr); }

private:
    QPointer<ThemedIcons> m_icons;
    quint64 m_id;
    Completion m_completion;
    IconWorker::Abandoned m_abandoned = std::make_shared<std::atomic_bool>(false);
};

ThemedIcons::ThemedIcons(Clock &clock, const SessionIconTheme &theme, QStringList bases)
    : m_clock(clock)
    , m_theme(theme)
    , m_bases(std::move(bases))
{
    connect(&theme, &SessionIconTheme::nameChanged, this, &ThemedIcons::changeTheme);
}

ThemedIcons::~ThemedIcons()
{
    // What nobody will hear of is not drawn while the thread comes to its end.
    for (const Pending *pending : std::as_const(m_waiting))
        pending->abandoned()->store(true);
}

std::unique_ptr<Icons::Request> ThemedIcons::load(const IconRequest &request, Completion completion)
{
    const quint64 id = ++m_lastId;
    auto pending = std::make_unique<Pending>(*this, id, std::move(completion));
    const bool isTooMany = m_waiting.size() >= mostWaiting;
    m_waiting.insert(id, pending.get());
    if (isTooMany) {
        QMetaObject::invokeMethod(
            this, [this, id] { answer(id, {}); }, Qt::QueuedConnection);
    } else if (request.kind == IconKind::application && m_locator) {
        m_locator(request.subject, [icons = QPointer<ThemedIcons>(this), id, request](const QString &path) {
            if (icons)
                icons->find(id, {request.kind, path, request.size, request.scale});
        });
    } else if (request.kind == IconKind::file) {
        kinds().find(request.subject, [this, id, request](const QStringList &names) { find(id, request, names); });
    } else {
        find(id, request);
    }
    return pending;
}

void ThemedIcons::find(quint64 id, const IconRequest &request, const QStringList &fileIcons)
{
    if (const Pending *pending = m_waiting.value(id))
        thread().load(id, request, fileIcons, pending->abandoned());
}

FileKinds &ThemedIcons::kinds()
{
    if (!m_kinds) {
        m_kinds = std::make_unique<FileKinds>(m_clock);
        connect(m_kinds.get(), &FileKinds::changed, this, &Icons::themeChanged);
    }
    return *m_kinds;
}

IconThread &ThemedIcons::thread()
{
    if (!m_thread) {
        m_thread = std::make_unique<IconThread>(m_bases);
        m_thread->setTheme(m_theme.name());
        connect(m_thread.get(), &IconThread::answered, this, &ThemedIcons::answer);
        connect(m_thread.get(), &IconThread::foldersTouched, this, &ThemedIcons::refreshOnceQuiet);
        connect(m_thread.get(), &IconThread::iconsChanged, this, &Icons::themeChanged);
    }
    return *m_thread;
}

void ThemedIcons::answer(quint64 id, const QImage &icon)
{
    Pending *pending = m_waiting.take(id);
    if (!pending)
        return;
    const Completion completion = pending->release();
    completion(icon);
}

void ThemedIcons::refreshOnceQuiet()
{
    m_refresh = m_clock.after(quietTime, [this] { m_thread->refresh(); });
}

void ThemedIcons::changeTheme()
{
    if (!m_thread)
        return;
    m_thread->setTheme(m_theme.name());
    Q_EMIT themeChanged();
}

} // namespace moorline
