#include "platform/AppBundles.h"

namespace moorline {

QCoro::Task<> AppBundles::lookAt([[maybe_unused]] QStringList paths)
{
    co_return;
}

} // namespace moorline
