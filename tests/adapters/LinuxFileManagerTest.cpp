#include "platform/linux/apps/LinuxFileManager.h"
#include "fakes/FakeApplications.h"
#include "harness/TestCase.h"

namespace {

using moorline::LinuxFileManager;
using moorline::RunningApplication;
using moorline::test::FakeWorkspace;

const QString home = QStringLiteral("/home/someone");
const QString finder = QStringLiteral("com.apple.finder");

class LinuxFileManagerTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutAWindowTheHomeFolderIsShown()
    {
        FakeWorkspace workspace;
        workspace.launch(QStringLiteral("paint"), QStringLiteral("/paint.desktop"));
        LinuxFileManager(workspace, home).comeForward(nullptr);
        QCOMPARE(workspace.folders, QStringList{home});
        QVERIFY(workspace.activated.isEmpty());
    }

    void withAWindowItComesForward()
    {
        FakeWorkspace workspace;
        workspace.launch(QStringLiteral("paint"), QStringLiteral("/paint.desktop"));
        const RunningApplication running = workspace.launch(finder, QStringLiteral("/files.desktop"));
        LinuxFileManager(workspace, home).comeForward(nullptr);
        QCOMPARE(workspace.activated, QList<RunningApplication>{running});
        QVERIFY(workspace.folders.isEmpty());
    }

    void whoAsksIsToldHowItEnded()
    {
        FakeWorkspace workspace;
        QList<std::optional<QString>> answers;
        const auto opened = [&answers](const std::optional<QString> &error) { answers.append(error); };
        LinuxFileManager(workspace, home).comeForward(opened);
        QCOMPARE(answers.size(), 0);
        workspace.folderShown(QStringLiteral("there is none"));
        QCOMPARE(answers, QList<std::optional<QString>>{QStringLiteral("there is none")});
        workspace.launch(finder, QStringLiteral("/files.desktop"));
        LinuxFileManager(workspace, home).comeForward(opened);
        QCOMPARE(answers.last(), std::nullopt);
    }

    void oneThatOnlyDrawsTheDesktopShowsTheHomeFolder()
    {
        FakeWorkspace workspace;
        workspace.launch(finder, QStringLiteral("/files.desktop"));
        workspace.running->first().activationPolicy = moorline::ActivationPolicy::accessory;
        LinuxFileManager(workspace, home).comeForward(nullptr);
        QCOMPARE(workspace.folders, QStringList{home});
        QVERIFY(workspace.activated.isEmpty());
    }

    void whereNobodyKnowsWhatRunsTheHomeFolderIsShown()
    {
        FakeWorkspace workspace;
        workspace.running.reset();
        LinuxFileManager(workspace, home).comeForward(nullptr);
        QCOMPARE(workspace.folders, QStringList{home});
    }
};

MOORLINE_TEST(LinuxFileManagerTest);

} // namespace

#include "LinuxFileManagerTest.moc"
