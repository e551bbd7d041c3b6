#include "freedesktop/MountTable.h"

#include "harness/TestCase.h"

using namespace moorline;

namespace {

constexpr auto table = R"(22 1 254:0 / / rw,relatime - ext4 /dev/vda rw
23 22 0:5 / /dev rw - devtmpfs devtmpfs rw
31 22 0:40 / /mnt/share rw,nosuid shared:7 - nfs4 server:/ rw
32 22 0:41 / /mnt/a\040b\134c rw - fuse bindfs rw
33 31 0:42 / /mnt/share/inner rw - ext4 /dev/vdb rw
34 22 0:43 / /mnt/share rw - fuse bindfs rw
no line
35 22 0:44
)";

} // namespace

class MountTableTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyLineIsAMount()
    {
        const MountTable mounts = MountTable::parse(table);
        QCOMPARE(mounts.mounts().size(), 6);
        QCOMPARE(mounts.mounts().at(3), (Mount{.id = 32, .point = "/mnt/a b\\c"}));
    }

    void aPathIsOnTheMountItIsBelow_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<quint64>("id");
        QTest::addColumn<QByteArray>("point");
        const auto row = [](const char *path, quint64 id, const char *point) {
            QTest::newRow(path) << QByteArray(path) << id << QByteArray(point);
        };
        row("/home/me", 22, "/");
        row("/", 22, "/");
        row("/dev", 23, "/dev");
        row("/developer", 22, "/");
        row("/mnt/a b\\c/file", 32, "/mnt/a b\\c");
        row("/mnt/share/inner/file", 33, "/mnt/share/inner");
        // The later one hides the earlier.
        row("/mnt/share/file", 34, "/mnt/share");
    }

    void aPathIsOnTheMountItIsBelow()
    {
        QFETCH(QByteArray, path);
        const Mount mount = MountTable::parse(table).at(path);
        QTEST(mount.id, "id");
        QTEST(mount.point, "point");
    }

    void withoutATableAllIsOneMount()
    {
        QCOMPARE(MountTable().at("/mnt/share"), (Mount{.id = 0, .point = "/"}));
        QVERIFY(MountTable::parse({}).mounts().isEmpty());
    }
};

MOORLINE_TEST(MountTableTest);
#include "MountTableTest.moc"
