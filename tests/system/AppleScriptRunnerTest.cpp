#include "system/AppleScriptRunner.h"
#include "harness/Answer.h"
#include "system/ScriptTestCase.h"

using namespace moorline;
using namespace std::chrono_literals;
using Text = std::optional<QString>;

class AppleScriptRunnerTest final : public test::ScriptTestCase {
    Q_OBJECT
private Q_SLOTS:
    void scriptIsPassedWholeAsOneArgument()
    {
        const QString program = m_programs->addRecorder("host");
        QCOMPARE(run(program, QStringLiteral("tell \"x\"\n  say 'é' $HOME\nend")), Text(QString()));
        QCOMPARE(m_programs->recorded("host"), QStringLiteral("<-e>\n<tell \"x\"\n  say 'é' $HOME\nend>\n"));
    }

    void answerIsTheTrimmedOutput_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<Text>("expected");
        const auto row = [](const char *name, const char *body, const Text &expected) {
            QTest::newRow(name) << QByteArray(body) << expected;
        };
        row("text", "echo playing", QStringLiteral("playing"));
        row("blanks around", "printf '  \\t\\n a  b \\r\\n\\n'", QStringLiteral("a  b"));
        row("lines within", "printf 'a\\nb\\n'", QStringLiteral("a\nb"));
        row("newlines only", "printf '\\n\\n\\n'", QString());
        row("nothing", "true", QString());
        row("UTF-8", "printf 'Sigur R\\303\\263s \\360\\237\\216\\265'", QStringLiteral("Sigur Rós 🎵"));
        row("wide blanks", "printf '\\302\\240a\\343\\200\\200'", QStringLiteral("a"));
        row("errors are of no interest", "echo trouble >&2; echo fine", QStringLiteral("fine"));
        row("input is empty", "cat; echo end", QStringLiteral("end"));
        row("not UTF-8", "printf 'a\\377b'", std::nullopt);
        row("cut in a character", "printf 'a\\303'", std::nullopt);
        row("non-zero exit", "echo half; exit 1", std::nullopt);
        row("crash", "echo half; kill -SEGV $$", std::nullopt);
        row("killed", "echo half; kill -KILL $$", std::nullopt);
    }

    void answerIsTheTrimmedOutput()
    {
        QFETCH(QByteArray, body);
        QFETCH(Text, expected);
        QCOMPARE(run(m_programs->add("host", body)), expected);
    }

    void missingProgramGivesNoAnswer() { QCOMPARE(run(m_programs->path("missing")), Text()); }

    void programThatMayNotRunGivesNoAnswer()
    {
        const QString program = m_programs->add("host", "echo hi");
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner));
        QCOMPARE(run(program), Text());
    }

    void longOutputIsReadWhole()
    {
        const auto answer = run(m_programs->add("host", "head -c 1000000 /dev/zero | tr '\\0' x"));
        QVERIFY(answer);
        QCOMPARE(answer->size(), 1000000);
    }

    void manyErrorsDoNotStallTheProgram()
    {
        QCOMPARE(
            run(m_programs->add("host", "head -c 4000000 /dev/zero >&2; echo done")), Text(QStringLiteral("done")));
    }

    void floodOfOutputIsCutOffAndGivesNoAnswer() { QCOMPARE(run(m_programs->add("host", "exec yes")), Text()); }

    void outputThatGoesOnAfterTheProgramIsWaitedFor()
    {
        const QString program =
            m_programs->add("host", "mkfifo \"$home/gate\"\n{ read x <\"$home/gate\"; echo late; } &\necho early");
        const test::Answer<Text> answer(AppleScriptRunner(*m_clock, program).run(QString(), 1s));
        QTRY_VERIFY(m_programs->exists("gate"));
        m_clock->advance(1h);
        QVERIFY(!answer.isThere());
        m_programs->write("gate", "go\n");
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text(QStringLiteral("early\nlate")));
    }

    void runsOverlap()
    {
        const QString program = m_programs->add("host",
            "if [ \"$2\" = slow ]; then\n"
            "mkfifo \"$home/gate\"; read x <\"$home/gate\"\n"
            "fi\necho \"$2\"");
        const AppleScriptRunner scripts(*m_clock, program);
        const test::Answer<Text> slow(scripts.run(QStringLiteral("slow"), 1s));
        const test::Answer<Text> quick(scripts.run(QStringLiteral("quick"), 1s));
        QTRY_VERIFY(quick.isThere());
        QVERIFY(!slow.isThere());
        QTRY_VERIFY(m_programs->exists("gate"));
        m_programs->write("gate", "go\n");
        QTRY_VERIFY(slow.isThere());
        QCOMPARE(quick.value(), Text(QStringLiteral("quick")));
        QCOMPARE(slow.value(), Text(QStringLiteral("slow")));
    }

    void runGoesOnWithoutItsRunner()
    {
        auto scripts = std::make_unique<AppleScriptRunner>(*m_clock, m_programs->add("host", "echo still"));
        const test::Answer<Text> answer(scripts->run(QString(), 1s));
        scripts.reset();
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Text(QStringLiteral("still")));
    }

    void detachedScriptRuns()
    {
        const QString program = m_programs->addRecorder("host", "touch \"$home/done\"");
        AppleScriptRunner(*m_clock, program).runDetached(QStringLiteral("open trash"));
        QTRY_VERIFY(m_programs->exists("done"));
        QCOMPARE(m_programs->recorded("host"), QStringLiteral("<-e>\n<open trash>\n"));
    }

    void detachedScriptWithoutAHostIsSilent()
    {
        const AppleScriptRunner scripts(*m_clock, m_programs->path("missing"));
        scripts.runDetached(QStringLiteral("open trash"));
        // The next run has an answer only after the first one failed.
        const test::Answer<Text> later(scripts.run(QString(), 1s));
        QTRY_VERIFY(later.isThere());
    }

    void finishedRunsLeaveNoTimer()
    {
        QVERIFY(run(m_programs->add("host", "echo a; exec >&- 2>&-; exit 0")));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

private:
    Text run(const QString &program, const QString &script = QStringLiteral("script"))
    {
        const test::Answer<Text> answer(AppleScriptRunner(*m_clock, program).run(script, 5s));
        return QTest::qWaitFor([&] { return answer.isThere(); }, 20000) ? answer.value() : QStringLiteral("no end");
    }
};

MOORLINE_TEST(AppleScriptRunnerTest);
#include "AppleScriptRunnerTest.moc"
