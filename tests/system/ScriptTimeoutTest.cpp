#include "harness/Answer.h"
#include "system/AppleScriptRunner.h"
#include "system/ScriptTestCase.h"

#include <csignal>

using namespace moorline;
using namespace std::chrono_literals;
using Text = std::optional<QString>;

class ScriptTimeoutTest final : public test::ScriptTestCase {
    Q_OBJECT
private Q_SLOTS:
    void timeoutWaitsForBothOutputsToClose_data()
    {
        QTest::addColumn<QByteArray>("closing");
        QTest::newRow("nothing closed") << QByteArray("true");
        QTest::newRow("output closed") << QByteArray("exec >&-");
        QTest::newRow("errors closed") << QByteArray("exec 2>&-");
    }

    void timeoutWaitsForBothOutputsToClose()
    {
        QFETCH(QByteArray, closing);
        const auto answer = start("echo text; " + closing + "\n" + atTheGate);
        QTRY_VERIFY(m_programs->exists("gate"));
        m_clock->advance(1h);
        QVERIFY(!answer.isThere());
        m_programs->write("gate", "go\n");
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text(QStringLiteral("text")));
    }

    void programThatEndsWithinTheTimeoutHasItsAnswer()
    {
        const auto answer = start(silently + atTheGate);
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(4999ms);
        QVERIFY(!answer.isThere());
        m_programs->write("gate", "go\n");
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text(QStringLiteral("text")));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void programThatOutlastsTheTimeoutIsTerminated()
    {
        const auto answer = start("trap 'touch \"$home/terminated\"; exit 0' TERM\n" + silently + forEver);
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(5s);
        QVERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text());
        QTRY_VERIFY(m_programs->exists("terminated"));
        QTRY_COMPARE(m_clock->runningTimers(), 0);
    }

    void programThatIgnoresItsTerminationIsKilled()
    {
        const auto answer = start("trap '' TERM\n" + silently + forEver);
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        const pid_t process = m_programs->contents("process").toInt();
        m_clock->advance(5s);
        QCOMPARE(answer.value(), Text());
        m_clock->advance(1s);
        QCOMPARE(::kill(process, 0), 0);
        m_clock->advance(1s);
        QTRY_COMPARE(::kill(process, 0), -1);
    }

    void timeoutOfZeroLeavesNoTimeAtAll()
    {
        const auto answer = start(silently + forEver, 0s);
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(0s);
        QVERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text());
        QTRY_COMPARE(m_clock->runningTimers(), 0);
    }

    void detachedScriptHasTenSeconds()
    {
        const QString program = m_programs->add("host", silently + forEver);
        AppleScriptRunner(*m_clock, program).runDetached(QString());
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        const pid_t process = m_programs->contents("process").toInt();
        m_clock->advance(9999ms);
        QCOMPARE(::kill(process, 0), 0);
        m_clock->advance(1ms);
        QTRY_COMPARE(::kill(process, 0), -1);
    }

private:
    /// Script: tells its process number, writes, and closes both outputs.
    static inline const QByteArray silently = "echo $$ >\"$home/process\"; echo text; exec >&- 2>&-\n";
    /// Script: goes on when something is written into "gate".
    static inline const QByteArray atTheGate = "mkfifo \"$home/gate\"; read x <\"$home/gate\"\n";
    /// Script: stays until it is told to end.
    static inline const QByteArray forEver = "mkfifo \"$home/never\"; while :; do read x <>\"$home/never\"; done\n";

    test::Answer<Text> start(const QByteArray &body, std::chrono::milliseconds timeout = 5s)
    {
        const QString program = m_programs->add("host", body);
        return test::Answer<Text>(AppleScriptRunner(*m_clock, program).run(QString(), timeout));
    }
};

MOORLINE_TEST(ScriptTimeoutTest);
#include "ScriptTimeoutTest.moc"
