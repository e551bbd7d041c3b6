#include "system/ScriptedSystemDockControl.h"
#include "fakes/FakeClock.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"
#include "system/AppleScriptRunner.h"
#include "system/Programs.h"

using namespace moorline;

class ScriptedSystemDockControlTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_programs = std::make_unique<test::Programs>();
    }

    void cleanup()
    {
        // A script uses the clock until it has ended.
        QTRY_VERIFY(!test::Programs::areRunning());
        TestCase::cleanup();
    }

    void autoHideIsAskedOfSystemEvents()
    {
        QVERIFY(enableAutoHide(m_programs->addRecorder("host")));
        QCOMPARE(m_programs->recorded("host"),
            QStringLiteral("<-e>\n<tell application \"System Events\"\n"
                           "    tell dock preferences to set autohide to true\n"
                           "end tell>\n"));
    }

    void refusedScriptIsAFailure() { QVERIFY(!enableAutoHide(m_programs->add("host", "exit 1"))); }

    void missingScriptHostIsAFailure() { QVERIFY(!enableAutoHide(m_programs->path("missing"))); }

    void scriptHasSixSeconds()
    {
        const QString program = m_programs->add("host", "exec >&- 2>&-; mkfifo \"$home/n\"; read x <\"$home/n\"");
        const AppleScriptRunner scripts(m_clock, program);
        ScriptedSystemDockControl control(scripts);
        const test::Answer<bool> answer(control.enableAutoHide());
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(std::chrono::milliseconds(5999));
        QVERIFY(!answer.isThere());
        m_clock.advance(std::chrono::milliseconds(1));
        QVERIFY(answer.isThere());
        QVERIFY(!answer.value());
        QTRY_COMPARE(m_clock.runningTimers(), 0);
    }

    void delayIsWrittenAndTheDockRestarted_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0.0 << QStringLiteral("0.0");
        QTest::newRow("a quarter") << 0.25 << QStringLiteral("0.25");
        QTest::newRow("one") << 1.0 << QStringLiteral("1.0");
    }

    void delayIsWrittenAndTheDockRestarted()
    {
        QFETCH(double, seconds);
        QFETCH(QString, text);
        QVERIFY(setRevealDelay(m_programs->addRecorder("defaults"), m_programs->addRecorder("killall"), seconds));
        QCOMPARE(m_programs->recorded("defaults"),
            QStringLiteral("<write>\n<com.apple.dock>\n<autohide-delay>\n<-float>\n<%1>\n").arg(text));
        QCOMPARE(m_programs->recorded("killall"), QStringLiteral("<Dock>\n"));
    }

    void dockRestartsOnlyAfterTheDelayIsWritten()
    {
        const QString defaults = m_programs->add("defaults", "touch \"$home/written\"");
        const QString killall = m_programs->add("killall", "test -e \"$home/written\" && touch \"$home/inOrder\"");
        QVERIFY(setRevealDelay(defaults, killall));
        QVERIFY(m_programs->exists("inOrder"));
    }

    void failedWriteNeverRestartsTheDock_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("non-zero exit") << QByteArray("exit 1");
        QTest::newRow("crash") << QByteArray("kill -SEGV $$");
        QTest::newRow("killed") << QByteArray("kill -KILL $$");
    }

    void failedWriteNeverRestartsTheDock()
    {
        QFETCH(QByteArray, script);
        QVERIFY(!setRevealDelay(m_programs->add("defaults", script), m_programs->addRecorder("killall")));
        QVERIFY(!m_programs->exists("killall.log"));
    }

    void missingWriterNeverRestartsTheDock()
    {
        QVERIFY(!setRevealDelay(m_programs->path("missing"), m_programs->addRecorder("killall")));
        QVERIFY(!m_programs->exists("killall.log"));
    }

    void howTheRestartEndsDoesNotMatter_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("no such process") << QByteArray("exit 1");
        QTest::newRow("crash") << QByteArray("kill -SEGV $$");
    }

    void howTheRestartEndsDoesNotMatter()
    {
        QFETCH(QByteArray, script);
        QVERIFY(setRevealDelay(m_programs->add("defaults", "true"), m_programs->add("killall", script)));
    }

    void missingRestarterIsAFailure()
    {
        QVERIFY(!setRevealDelay(m_programs->add("defaults", "true"), m_programs->path("missing")));
    }

    void delayIsSetInTheBackground()
    {
        const AppleScriptRunner scripts(m_clock);
        auto control = std::make_unique<ScriptedSystemDockControl>(scripts,
            ScriptedSystemDockControl::Programs{
                m_programs->add("defaults", "true"), m_programs->add("killall", "true")});
        const test::Answer<bool> answer(control->setRevealDelay(1));
        QVERIFY(!answer.isThere());
        control.reset();
        QTRY_VERIFY(answer.isThere());
        QVERIFY(answer.value());
    }

private:
    bool enableAutoHide(const QString &scriptHost)
    {
        const AppleScriptRunner scripts(m_clock, scriptHost);
        return outcome(ScriptedSystemDockControl(scripts).enableAutoHide());
    }

    bool setRevealDelay(const QString &defaults, const QString &killall, double seconds = 0.5)
    {
        const AppleScriptRunner scripts(m_clock);
        return outcome(ScriptedSystemDockControl(scripts, {defaults, killall}).setRevealDelay(seconds));
    }

    static bool outcome(QCoro::Task<bool> task)
    {
        const test::Answer<bool> answer(std::move(task));
        return QTest::qWaitFor([&] { return answer.isThere(); }) ? answer.value()
                                                                 : throw std::runtime_error("no answer");
    }

    test::FakeClock m_clock;
    std::unique_ptr<test::Programs> m_programs;
};

MOORLINE_TEST(ScriptedSystemDockControlTest);
#include "ScriptedSystemDockControlTest.moc"
