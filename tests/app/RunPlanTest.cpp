#include "app/RunPlan.h"

#include "harness/TestCase.h"

#include <QProcessEnvironment>

using namespace moorline;
using namespace moorline::test;

namespace {

RunPlan planFor(const QStringList &variables)
{
    QProcessEnvironment environment;
    for (const QString &variable : variables)
        environment.insert(variable, QStringLiteral("/tmp/out.png"));
    return runPlan(environment);
}

const QString render = QStringLiteral("MOORLINE_RENDER");
const QString import = QStringLiteral("MOORLINE_IMPORT_DOCK");
const QString snapshot = QStringLiteral("MOORLINE_SNAPSHOT");
const QString debug = QStringLiteral("MOORLINE_DEBUG");

} // namespace

class RunPlanTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void anEmptyEnvironmentRunsTheBar()
    {
        QCOMPARE(planFor({}), RunPlan());
        QCOMPARE(displayNeed(planFor({})), DisplayNeed::required);
    }

    void thePreviewWinsOverTheImportAndTheSnapshot()
    {
        const RunPlan plan = planFor({snapshot, import, render});
        QCOMPARE(plan.mode, RunMode::render);
        QCOMPARE(plan.previewPath, QStringLiteral("/tmp/out.png"));
        QCOMPARE(plan.snapshotPath, std::nullopt);
        QCOMPARE(displayNeed(plan), DisplayNeed::optional);
    }

    void theImportWinsOverTheSnapshot()
    {
        const RunPlan plan = planFor({snapshot, import});
        QCOMPARE(plan.mode, RunMode::importDock);
        QCOMPARE(plan.snapshotPath, std::nullopt);
        QCOMPARE(displayNeed(plan), DisplayNeed::optional);
    }

    void aSnapshotIsANormalRun()
    {
        const RunPlan plan = planFor({snapshot});
        QCOMPARE(plan.mode, RunMode::normal);
        QCOMPARE(plan.snapshotPath, QStringLiteral("/tmp/out.png"));
        QCOMPARE(displayNeed(plan), DisplayNeed::optional);
    }

    void aServerMayStandInForTheWeathersOwn()
    {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("MOORLINE_WEATHER_ORIGIN"), QStringLiteral("http://localhost:8080"));
        QCOMPARE(runPlan(environment).weatherOrigin, QUrl(QStringLiteral("http://localhost:8080")));
        QVERIFY(!planFor({render}).weatherOrigin);
    }

    void aServerWithoutANameIsNone()
    {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("MOORLINE_WEATHER_ORIGIN"), QString());
        QCOMPARE(runPlan(environment), RunPlan());
    }

    void presenceCountsAndNotTheValue()
    {
        QProcessEnvironment environment;
        environment.insert(import, QString());
        environment.insert(debug, QString());
        const RunPlan plan = runPlan(environment);
        QCOMPARE(plan.mode, RunMode::importDock);
        QVERIFY(plan.debug);
    }
};

MOORLINE_TEST(RunPlanTest);

#include "RunPlanTest.moc"
