#include "platform/linux/apps/ProcessReader.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/ProcessBook.h"

#include <QProcess>
#include <QSignalSpy>
#include <unistd.h>

namespace {

using moorline::ProcessBook;
using moorline::ProcessFacts;
using moorline::readProcess;

/// Real processes.
class ProcessReaderTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aProcessIsReadAsItIs()
    {
        start(QStringLiteral("sleep"), {QStringLiteral("60"), QStringLiteral("0.5")});
        const ProcessFacts facts = readProcess(m_program->processId());
        QCOMPARE(facts.process, m_program->processId());
        QCOMPARE(facts.parent, qint64(getpid()));
        QVERIFY(facts.executable.endsWith(QStringLiteral("/sleep")));
        QVERIFY(facts.command.value(0).endsWith(QStringLiteral("sleep")));
        QCOMPARE(facts.command.mid(1), (QStringList{QStringLiteral("60"), QStringLiteral("0.5")}));
        QVERIFY(!facts.parentCommand.isEmpty());
        QCOMPARE(facts.flatpakId, QString());
        QCOMPARE(facts.hintedEntry, QString());
        QCOMPARE(facts.launchedEntry, QString());
        QVERIFY(!facts.launchedProcess);
    }

    void theEnvironmentTellsOfEntries()
    {
        start(QStringLiteral("sleep"), {QStringLiteral("60")},
            {QStringLiteral("BAMF_DESKTOP_FILE_HINT=/a/hint.desktop"),
                QStringLiteral("GIO_LAUNCHED_DESKTOP_FILE=/a/with=sign.desktop"),
                QStringLiteral("GIO_LAUNCHED_DESKTOP_FILE_PID=4711"), QStringLiteral("XBAMF_DESKTOP_FILE_HINT=/no")});
        const ProcessFacts facts = readProcess(m_program->processId());
        QCOMPARE(facts.hintedEntry, QStringLiteral("/a/hint.desktop"));
        QCOMPARE(facts.launchedEntry, QStringLiteral("/a/with=sign.desktop"));
        QCOMPARE(facts.launchedProcess, 4711);
    }

    void anEmptyWordIsAWord()
    {
        start(
            QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("read line"), QString(), QStringLiteral("x")});
        QCOMPARE(readProcess(m_program->processId()).command.mid(1),
            (QStringList{QStringLiteral("-c"), QStringLiteral("read line"), QString(), QStringLiteral("x")}));
    }

    void aProcessThatIsGoneSaysNothing()
    {
        start(QStringLiteral("true"), {});
        const qint64 process = m_program->processId();
        QVERIFY(m_program->waitForFinished());
        QCOMPARE(readProcess(process), (ProcessFacts{.process = process}));
    }

    void theBookReadsEachOnce()
    {
        start(QStringLiteral("sleep"), {QStringLiteral("60")});
        const qint64 process = m_program->processId();
        ProcessBook book;
        QSignalSpy read(&book, &ProcessBook::processRead);
        QVERIFY(!book.find(process));
        QVERIFY(!book.find(process));
        QTRY_COMPARE(read.size(), 1);
        QVERIFY(book.find(process));
        QCOMPARE(book.find(process)->process, process);
        QTest::qWait(50);
        QCOMPARE(read.size(), 1);
        book.keepOnly({process});
        QVERIFY(book.find(process));
        book.keepOnly({});
        QVERIFY(!book.find(process));
        QTRY_COMPARE(read.size(), 2);
    }

    void theBookRemembersLaunches()
    {
        start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("sleep 60; true")});
        const qint64 shell = m_program->processId();
        qint64 child = 0;
        QTRY_VERIFY((child = childOf(shell)) != 0);
        ProcessBook book;
        QSignalSpy read(&book, &ProcessBook::processRead);
        book.noteLaunch(shell, QStringLiteral("/a/nap.desktop"));
        static_cast<void>(book.find(shell));
        static_cast<void>(book.find(child));
        QTRY_COMPARE(read.size(), 2);
        QCOMPARE(book.find(shell)->launchedEntry, QStringLiteral("/a/nap.desktop"));
        QCOMPARE(book.find(shell)->launchedProcess, shell);
        QCOMPARE(book.find(child)->launchedEntry, QStringLiteral("/a/nap.desktop"));
        QCOMPARE(book.find(child)->launchedProcess, shell);
        QCOMPARE(book.find(child)->parent, shell);
        QVERIFY(book.find(child)->parentCommand.value(0).endsWith(QStringLiteral("sh")));
    }

    void theBookForgetsLaunchesThatEnded()
    {
        start(QStringLiteral("sleep"), {QStringLiteral("60")});
        const qint64 process = m_program->processId();
        ProcessBook book;
        QSignalSpy read(&book, &ProcessBook::processRead);
        book.noteLaunch(getpid(), QStringLiteral("/a/parent.desktop"));
        book.noteLaunch(process, QStringLiteral("/a/nap.desktop"));
        // As if another one had its number now.
        book.noteEnd(process);
        static_cast<void>(book.find(process));
        QTRY_COMPARE(read.size(), 1);
        QCOMPARE(book.find(process)->launchedEntry, QStringLiteral("/a/parent.desktop"));
        book.noteEnd(getpid());
        book.keepOnly({});
        static_cast<void>(book.find(process));
        QTRY_COMPARE(read.size(), 2);
        QCOMPARE(book.find(process)->launchedEntry, QString());
    }

    void cleanup()
    {
        if (m_program) {
            m_program->closeWriteChannel();
            m_program->kill();
            m_program->waitForFinished();
        }
        m_program.reset();
        TestCase::cleanup();
    }

private:
    void start(const QString &program, const QStringList &arguments, const QStringList &environment = {})
    {
        m_program = std::make_unique<QProcess>();
        m_program->setEnvironment(QStringList{QStringLiteral("PATH=/usr/bin:/bin")} + environment);
        m_program->start(program, arguments);
        QVERIFY(m_program->waitForStarted());
    }
    static qint64 childOf(qint64 process)
    {
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(process));
        return children.open(QIODevice::ReadOnly) ? children.readAll().trimmed().toLongLong() : 0;
    }

    std::unique_ptr<QProcess> m_program;
};

MOORLINE_TEST(ProcessReaderTest);

} // namespace

#include "ProcessReaderTest.moc"
