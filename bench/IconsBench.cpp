#include "app/BarWidgets.h"
#include "app/Services.h"
#include "apps/AppShortcutsWidget.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "fakes/FakePlatform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMouseEvent>
#include <QTextStream>
#include <algorithm>

// What icons cost: laying them out, and a frame while one grows under the pointer.

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// A program with so many pinned applications, on a faked system.
struct Program {
    explicit Program(int count)
    {
        services.store.change([&](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::appShortcut};
            settings.appShortcuts = shortcuts(count);
        });
        services.start();
    }

    static QList<AppShortcut> shortcuts(int count)
    {
        QList<AppShortcut> made;
        for (int i = 0; i < count; ++i) {
            const QString name = QString::number(i);
            made.append({u'/' + name + QStringLiteral(".app"), QStringLiteral("org.example.") + name, name});
        }
        return made;
    }

    std::unique_ptr<DockBarView> makeBar()
    {
        return moorline::makeBar(services, {}, [](qreal) {});
    }

    /// With a picture that no compression of time makes cheap to draw.
    void answerIcons()
    {
        while (platform.icons.running() > 0) {
            const IconRequest &asked =
                platform.icons.requested[platform.icons.requested.size() - platform.icons.running()];
            QImage icon = FakeIcons::square(asked, Qt::transparent);
            for (int y = 0; y < icon.height(); ++y) {
                for (int x = 0; x < icon.width(); ++x)
                    icon.setPixelColor(x, y, QColor(x * 2 % 256, y * 2 % 256, 128, (x + y) % 256));
            }
            platform.icons.answer(icon);
        }
    }

    FakePlatform platform;
    Services services{platform.ports, RunPlan{}};
};

void layOut(QTextStream &out, int count)
{
    Program program(count);
    QElapsedTimer timer;
    timer.start();
    const auto widget = makeBarWidget(WidgetKind::appShortcut, program.services);
    const double made = milliseconds(timer);
    timer.restart();
    widget->setIconSize(30);
    const double resized = milliseconds(timer);
    timer.restart();
    program.services.store.change(
        [](Settings &settings) { settings.appShortcuts.move(0, settings.appShortcuts.size() - 1); });
    const double reordered = milliseconds(timer);
    timer.restart();
    program.platform.workspace.launch(QStringLiteral("org.example.0"), QStringLiteral("/0.app"));
    const double ran = milliseconds(timer);
    out << QStringLiteral(
        "%1 icons: made %2 ms, another size %3 ms, another order (written too) %4 ms, one runs %5 ms\n")
               .arg(count, 4)
               .arg(made, 0, 'f', 2)
               .arg(resized, 0, 'f', 2)
               .arg(reordered, 0, 'f', 2)
               .arg(ran, 0, 'f', 2);
}

void movePointer(QWidget &viewport, const QPoint &place)
{
    QMouseEvent move(QEvent::MouseMove, place, viewport.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&viewport, &move);
}

class PaintCounter final : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

void growOne(QTextStream &out)
{
    Program program(10);
    DockHostingView view(program.makeBar());
    view.resize(600, 98);
    view.show();
    QCoreApplication::processEvents();
    program.answerIcons();
    QCoreApplication::processEvents();
    PaintCounter counter;
    view.viewport()->installEventFilter(&counter);
    QList<double> frames;
    const QPoint onAnIcon(300, 50);
    for (int round = 0; round < 20; ++round) {
        movePointer(*view.viewport(), round % 2 ? QPoint(2, 2) : onAnIcon);
        for (int frame = 0; frame < 20; ++frame) {
            QElapsedTimer timer;
            timer.start();
            program.platform.clock.advance(16ms);
            QCoreApplication::processEvents();
            frames.append(milliseconds(timer));
        }
    }
    std::sort(frames.begin(), frames.end());
    out << QStringLiteral("a frame while one icon grows or shrinks, at scale %1: median %2 ms, 95 of 100 within %3 ms, "
                          "slowest %4 ms; %5 of %6 painted\n")
               .arg(view.devicePixelRatioF())
               .arg(frames[frames.size() / 2], 0, 'f', 2)
               .arg(frames[frames.size() * 95 / 100], 0, 'f', 2)
               .arg(frames.last(), 0, 'f', 2)
               .arg(counter.paints)
               .arg(frames.size());
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    for (const int count : {10, 100, 500, 1000})
        layOut(out, count);
    growOne(out);
    return 0;
}
