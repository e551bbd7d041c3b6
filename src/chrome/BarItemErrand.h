#pragma once

#include "chrome/BarItem.h"

#include <QPointer>

namespace moorline {

/// Something that the item does for the pointer, in which anything may happen to it: as long as it lasts, a retired
/// item is not deleted.
class BarItem::Errand {
public:
    explicit Errand(BarItem &item)
        : m_item(&item)
    {
        ++item.m_errands;
    }
    Q_DISABLE_COPY_MOVE(Errand)
    ~Errand()
    {
        if (!m_item)
            return;
        --m_item->m_errands;
        for (QGraphicsItem *item = m_item; item; item = item->parentItem()) {
            auto *barItem = dynamic_cast<BarItem *>(item);
            if (barItem && barItem->m_isRetired && !barItem->isBusy())
                barItem->deleteLater();
        }
    }

    /// False when the item was destroyed meanwhile.
    [[nodiscard]] explicit operator bool() const { return !m_item.isNull(); }

private:
    QPointer<BarItem> m_item;
};

} // namespace moorline
