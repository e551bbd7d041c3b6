#include "dock/BarAccessibility.h"

#include "chrome/BarItem.h"
#include "dock/AccessibleBarItem.h"
#include "dock/AccessibleBarView.h"
#include "dock/DockHostingView.h"

namespace moorline {

namespace {

QAccessibleInterface *accessible([[maybe_unused]] const QString &className, QObject *object)
{
    if (auto *item = qobject_cast<BarItem *>(object))
        return new AccessibleBarItem(*item);
    if (auto *view = qobject_cast<DockHostingView *>(object))
        return new AccessibleBarView(*view);
    return nullptr;
}

} // namespace

void makeBarAccessible()
{
    QAccessible::installFactory(accessible);
}

} // namespace moorline
