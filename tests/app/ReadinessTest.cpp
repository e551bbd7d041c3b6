#include "app/Readiness.h"

#include "fakes/FakePlatform.h"
#include "harness/TestCase.h"

#include <QEvent>

using namespace moorline;
using namespace moorline::test;

namespace {

/// As the window system tells it, in the loop that comes next: it ends every one that runs.
void tellToQuit()
{
    const auto quit = [] {
        QEvent told(QEvent::Quit);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &told);
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), quit, Qt::QueuedConnection);
}

/// The system, which says when it is ready.
struct System {
    System()
    {
        platform.ports.whenReady = [this](std::function<void()> begin) { ready = std::move(begin); };
    }

    FakePlatform platform;
    std::function<void()> ready;
};

} // namespace

class ReadinessTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theApplicationBeginsOnceTheSystemIsReady()
    {
        System system;
        bool isReady = false;
        QMetaObject::invokeMethod(
            this,
            [&] {
                isReady = true;
                system.ready();
            },
            Qt::QueuedConnection);
        QVERIFY(waitUntilReady(system.platform.ports));
        QVERIFY(isReady);
    }

    void anApplicationThatIsToldToQuitBeforeDoesNotBegin()
    {
        System system;
        tellToQuit();
        QVERIFY(!waitUntilReady(system.platform.ports));
        // There is nothing left that this could end, or begin.
        system.ready();
        allowLoops();
    }

private:
    /// After a quit, none runs until the application's own begins.
    static void allowLoops()
    {
        tellToQuit();
        QCoreApplication::exec();
    }
};

MOORLINE_TEST(ReadinessTest);

#include "ReadinessTest.moc"
