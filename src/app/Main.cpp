#include "app/AppDelegate.h"
#include "app/Readiness.h"

#include <QApplication>
#include <QProcessEnvironment>
#include <QTextStream>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>

using namespace moorline;

namespace {

void printLine(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

void loadWording(QTranslator &wording, const QString &catalogue)
{
    if (!catalogue.isEmpty() && wording.load(catalogue))
        QCoreApplication::installTranslator(&wording);
}

/// What the program does from its first window to its last, on objects that are gone afterwards.
int run(const RunPlan &plan, const Preparation &preparation)
{
    Platform platform = createPlatform(preparation);
    // One-shot runs may come beside the bar that a person looks at.
    if (displayNeed(plan) == DisplayNeed::required && !platform.instanceClaim->take()) {
        qInfo("Moorline: already running");
        return EXIT_SUCCESS;
    }

    QTranslator wording;
    loadWording(wording, platform.wordingCatalogue);

    // Built while the wait is on.
    AppDelegate delegate(platform, plan, {.print = printLine, .terminate = [] { QCoreApplication::quit(); }});
    if (!waitUntilReady(platform))
        return EXIT_SUCCESS;
    QMetaObject::invokeMethod(
        &delegate, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const RunPlan plan = runPlan(QProcessEnvironment::systemEnvironment());
    const auto preparation = preparePlatform(displayNeed(plan));
    if (!preparation) {
        QTextStream(stderr) << "Moorline: there is no display to show the bar on\n";
        return EXIT_FAILURE;
    }
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Moorline"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MOORLINE_VERSION));
    QGuiApplication::setDesktopFileName(applicationIdentifier);
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const int status = run(plan, *preparation);
    // A thread may still be inside a library that looks for a proxy or a name and does not return. Qt's application
    // object would wait for it, and what libraries take down at the end of a process would go from under it.
    std::fflush(nullptr);
    std::_Exit(status);
}
