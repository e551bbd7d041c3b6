#include "platform/qt/LockFileClaim.h"

#include "harness/TestCase.h"

#include <QFile>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;

class LockFileClaimTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theSecondIsNotTheFirst()
    {
        const QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("not/there/yet"));
        auto first = std::make_unique<LockFileClaim>(folder);
        QVERIFY(first->take());
        QVERIFY(!LockFileClaim(folder).take());
        first.reset();
        QVERIFY(LockFileClaim(folder).take());
    }

    void aClaimOfAProcessThatDiedIsFree()
    {
        const QTemporaryDir root;
        QFile lock(root.filePath(QStringLiteral("instance.lock")));
        QVERIFY(lock.open(QIODevice::WriteOnly));
        // Beyond the largest process number there can be.
        lock.write(QByteArray("2147483646\nmoorline\n") + QSysInfo::machineHostName().toUtf8() + "\n");
        lock.close();
        QVERIFY(LockFileClaim(root.path()).take());
    }

    void aFolderThatCannotBeWrittenStopsNobody() { QVERIFY(LockFileClaim(QStringLiteral("/proc/nowhere")).take()); }
};

MOORLINE_TEST(LockFileClaimTest);

#include "LockFileClaimTest.moc"
