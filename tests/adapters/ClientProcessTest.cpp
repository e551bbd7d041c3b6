#include "platform/linux/x11/ClientProcess.h"
#include "harness/TestCase.h"

namespace {

class ClientProcessTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aMachineMayBeNamedShort_data()
    {
        QTest::addColumn<QByteArray>("one");
        QTest::addColumn<QByteArray>("other");
        QTest::addColumn<bool>("isSame");
        const auto row = [](const char *one, const char *other, bool isSame) {
            QTest::addRow("%s and %s", one, other) << QByteArray(one) << QByteArray(other) << isSame;
        };
        row("desk", "desk", true);
        row("Desk", "desk", true);
        row("desk.example.org", "desk", true);
        row("desk", "desk.example.org", true);
        row("desktop", "desk", false);
        row("desk.example.org", "desk.example.com", false);
        row("elsewhere", "desk", false);
    }

    void aMachineMayBeNamedShort()
    {
        QFETCH(const QByteArray, one);
        QFETCH(const QByteArray, other);
        QFETCH(const bool, isSame);
        QCOMPARE(moorline::isSameMachine(one, other), isSame);
    }
};

MOORLINE_TEST(ClientProcessTest);

} // namespace

#include "ClientProcessTest.moc"
