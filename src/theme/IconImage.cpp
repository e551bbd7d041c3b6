#include "theme/IconImage.h"

namespace moorline {

IconImage::IconImage(IconCache &cache, QObject *parent)
    : QObject(parent)
    , m_cache(cache)
{
    m_request.scale = 0;
    connect(&cache, &IconCache::iconsChanged, this, &IconImage::renew);
}

void IconImage::show(IconKind kind, const QString &subject, qreal size)
{
    const IconRequest wanted{.kind = kind, .subject = subject, .size = size, .scale = m_request.scale};
    if (wanted == m_request)
        return;
    m_request = wanted;
    renew();
}

const QImage &IconImage::at(qreal scale)
{
    if (!qFuzzyCompare(m_request.scale, scale)) {
        m_request.scale = scale;
        load();
    }
    return m_image;
}

void IconImage::renew()
{
    // Asked for by the next painting: nobody may look at it now.
    m_waiting.reset();
    m_request.scale = 0;
    Q_EMIT changed();
}

void IconImage::load()
{
    if (const auto known = m_cache.known(m_request)) {
        m_waiting.reset();
        m_image = *known;
        // Not under the painting that asks.
        if (m_image.isNull())
            QMetaObject::invokeMethod(this, &IconImage::missing, Qt::QueuedConnection);
        return;
    }
    m_waiting = m_cache.load(m_request, [this](const QImage &icon) { take(icon); });
}

void IconImage::take(const QImage &icon)
{
    m_waiting.reset();
    m_image = icon;
    Q_EMIT changed();
    if (m_image.isNull())
        Q_EMIT missing();
}

} // namespace moorline
