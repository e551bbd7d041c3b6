#include "support/RegularFile.h"

#include "harness/TestCase.h"
#include "support/FolderLock.h"

#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace moorline;

/// Whatever stands where a file is expected, nobody waits for it and nobody reads it without end.
class RegularFileTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(QStringLiteral("file"));
    }

    void aFileIsReadUpToTheLimit()
    {
        write("12345678");
        QCOMPARE(regularFileContent(m_path, 9), std::optional(QByteArray("12345678")));
        QCOMPARE(regularFileContent(m_path, 8), std::optional(QByteArray("12345678")));
        QCOMPARE(regularFileContent(m_path, 7), std::nullopt);
    }

    void anEmptyFileIsNotAbsent()
    {
        write("");
        const auto content = regularFileContent(m_path, 0);
        QVERIFY(content && content->isEmpty());
    }

    void aFileWithoutALengthIsReadAllTheSame()
    {
        const auto content = regularFileContent(QStringLiteral("/proc/self/cmdline"), 65536);
        QVERIFY(content && content->contains("test_support"));
        QCOMPARE(regularFileContent(QStringLiteral("/proc/self/cmdline"), 3), std::nullopt);
    }

    void aFileOfAHundredMegabytesIsNotRead()
    {
        write("");
        QVERIFY(QFile::resize(m_path, qint64(100) * 1024 * 1024));
        QCOMPARE(regularFileContent(m_path, 1024), std::nullopt);
    }

    void aLinkLeadsToItsFile()
    {
        write("content");
        const QString link = m_root->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(m_path, link));
        QCOMPARE(regularFileContent(link, 100), std::optional(QByteArray("content")));
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(regularFileContent(link, 100), std::nullopt);
    }

    void aPipeIsNotWaitedFor()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        QCOMPARE(regularFileContent(m_path, 100), std::nullopt);
        const FolderLock lock(m_path);
        QVERIFY(lock.isMine());
    }

    void whatIsNoFileIsNotRead_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("nothing") << QString();
        QTest::newRow("missing") << QStringLiteral("/nowhere/at/all");
        QTest::newRow("a folder") << QStringLiteral("/");
        QTest::newRow("an endless device") << QStringLiteral("/dev/zero");
        QTest::newRow("an empty device") << QStringLiteral("/dev/null");
        QTest::newRow("a zero in the path") << QStringLiteral("/proc/self/cmdline") + QChar(u'\0');
    }

    void whatIsNoFileIsNotRead()
    {
        QFETCH(QString, path);
        QCOMPARE(regularFileContent(path, 100), std::nullopt);
    }

private:
    void write(const QByteArray &bytes) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
};

MOORLINE_TEST(RegularFileTest);
#include "RegularFileTest.moc"
