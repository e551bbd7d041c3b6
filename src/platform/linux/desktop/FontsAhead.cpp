#include "platform/linux/desktop/FontsAhead.h"

#include <QLibrary>
#include <QThreadPool>

namespace moorline {

namespace {

/// Looked up rather than linked: it is Qt's to have. Where Qt gets here first, it reads for itself.
void initializeFontconfig()
{
    using Initialize = int (*)();
    if (const auto initialize =
            reinterpret_cast<Initialize>(QLibrary::resolve(QStringLiteral("fontconfig"), 1, "FcInit")))
        initialize();
}

} // namespace

void readFontsAhead()
{
    QThreadPool::globalInstance()->start(initializeFontconfig);
}

} // namespace moorline
