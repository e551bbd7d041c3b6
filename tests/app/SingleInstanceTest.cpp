#include "app/SingleInstance.h"

#include "harness/TestCase.h"

#include <QFile>
#include <QTemporaryDir>
#include <optional>

using namespace moorline;
using namespace moorline::test;

class SingleInstanceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theSecondIsNotTheFirst()
    {
        const QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("not/there/yet"));
        std::optional<SingleInstance> first(folder);
        QVERIFY(first->isFirst());
        QVERIFY(!SingleInstance(folder).isFirst());
        first.reset();
        QVERIFY(SingleInstance(folder).isFirst());
    }

    void aClaimOfAProcessThatDiedIsFree()
    {
        const QTemporaryDir root;
        QFile lock(root.filePath(QStringLiteral("instance.lock")));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        // Beyond the largest process number there can be.
        lock.write(QByteArray("2147483646\nmoorline\n") + QSysInfo::machineHostName().toUtf8() + "\n");
        lock.close();
        QVERIFY(SingleInstance(root.path()).isFirst());
    }

    void aFolderThatCannotBeWrittenStopsNobody() { QVERIFY(SingleInstance(QStringLiteral("/proc/nowhere")).isFirst()); }
};

MOORLINE_TEST(SingleInstanceTest);

#include "SingleInstanceTest.moc"
