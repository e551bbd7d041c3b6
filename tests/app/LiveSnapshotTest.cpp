#include "app/LiveSnapshot.h"

#include "dock/DockPanel.h"
#include "fakes/FakeClock.h"
#include "fakes/FakePanelWindow.h"
#include "harness/TestCase.h"

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;

namespace {

/// A panel filled with one colour.
struct Panel {
    Panel()
    {
        auto *content = new QWidget;
        auto *colored = new QWidget(content);
        colored->setStyleSheet(QStringLiteral("background: #ff8a4c"));
        colored->setGeometry(0, 0, 50, 98);
        panel.setContent(content);
        panel.setFrame({0, 0, 100, 98});
    }

    FakePanelWindow native;
    DockPanel panel{native};
};

} // namespace

class LiveSnapshotTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void withoutAPanelThereIsNothingToSnapshot()
    {
        QTest::ignoreMessage(QtInfoMsg, "Moorline: no panel to snapshot");
        LiveSnapshot::capture(nullptr, QStringLiteral("/nowhere"));
    }

    void withoutAPanelTheProgramEndsAllTheSame()
    {
        using namespace std::chrono_literals;
        FakeClock clock;
        int terminations = 0;
        const auto timer = LiveSnapshot::schedule(
            clock, [] { return nullptr; }, QStringLiteral("/nowhere"), [&terminations] { ++terminations; });
        clock.advance(7999ms);
        QCOMPARE(terminations, 0);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: no panel to snapshot");
        clock.advance(1ms);
        QCOMPARE(terminations, 1);
        clock.advance(60s);
        QCOMPARE(terminations, 1);
    }

    void anEmptyPanelHasNothingToSnapshotEither()
    {
        FakePanelWindow native;
        const DockPanel panel(native);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: no panel to snapshot");
        LiveSnapshot::capture(&panel, QStringLiteral("/nowhere"));
    }

    void aContentWithoutSizeHasNoBitmap()
    {
        Panel panel;
        panel.panel.content()->resize(0, 0);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: could not allocate bitmap");
        LiveSnapshot::capture(&panel.panel, QStringLiteral("/nowhere"));
    }

    void writesThePanelOnATransparentGround()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("bar.png"));
        Panel panel;
        panel.panel.content()->resize(100, 98);
        QTest::ignoreMessage(QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote live snapshot to ") + path));
        LiveSnapshot::capture(&panel.panel, path);
        const QImage image(path);
        QCOMPARE(image.size(), QSize(100, 98));
        QCOMPARE(image.pixelColor(20, 40), QColor(0xff, 0x8a, 0x4c));
        QCOMPARE(image.pixelColor(80, 40).alpha(), 0);
    }

    void aFolderThatIsNotThereIsReported()
    {
        Panel panel;
        panel.panel.content()->resize(100, 98);
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write snapshot: .+")));
        LiveSnapshot::capture(&panel.panel, QStringLiteral("/nowhere/at/all.png"));
    }
};

MOORLINE_TEST(LiveSnapshotTest);

#include "LiveSnapshotTest.moc"
