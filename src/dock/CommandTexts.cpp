#include "dock/CommandTexts.h"

#include <QCoreApplication>

namespace moorline {

QString CommandTexts::dockSettings()
{
    return QCoreApplication::translate("CommandTexts", "Dock Settings…");
}

QString CommandTexts::quit()
{
    return QCoreApplication::translate("CommandTexts", "Quit Moorline");
}

} // namespace moorline
