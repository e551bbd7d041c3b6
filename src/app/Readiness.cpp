#include "app/Readiness.h"

#include "platform/Platform.h"

#include <QEventLoop>

namespace moorline {

namespace {

struct Wait {
    QEventLoop loop;
    bool isOver = false;
};

} // namespace

bool waitUntilReady(const Platform &platform)
{
    const auto wait = std::make_shared<Wait>();
    // Readiness may come long after nobody waits for it any more.
    platform.whenReady([awaited = std::weak_ptr<Wait>(wait)] {
        const auto ended = awaited.lock();
        if (!ended)
            return;
        ended->isOver = true;
        ended->loop.quit();
    });
    wait->loop.exec();
    return wait->isOver;
}

} // namespace moorline
