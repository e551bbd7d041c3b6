#pragma once

#include "theme/IconCache.h"

namespace moorline {

/// One icon as something shows it: what was there stays until what it becomes is there. Nothing is asked of the system
/// before it is to be painted.
class IconImage final : public QObject {
    Q_OBJECT
public:
    /// `cache` outlives it.
    explicit IconImage(IconCache &cache, QObject *parent = nullptr);

    /// What is to be shown from now on; `size` is in points.
    void show(IconKind kind, const QString &subject, qreal size);
    /// What to paint at this many device pixels per point: null while nothing came, or there is nothing. Of another
    /// size or scale until the right one came.
    [[nodiscard]] const QImage &at(qreal scale);
    /// What was painted last.
    [[nodiscard]] const QImage &image() const { return m_image; }

Q_SIGNALS:
    /// There is another picture to paint.
    void changed();
    /// There is no such icon, as the last painting has shown.
    void missing();

private:
    void renew();
    void load();
    void take(const QImage &icon);

    IconCache &m_cache;
    /// What is shown, or waited for; its scale is that of the last painting.
    IconRequest m_request;
    QImage m_image;
    std::unique_ptr<IconCache::Waiting> m_waiting;
};

} // namespace moorline
