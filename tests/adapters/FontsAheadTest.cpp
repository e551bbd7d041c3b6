#include "platform/linux/desktop/FontsAhead.h"

#include "harness/TestCase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThreadPool>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace moorline::test {

/// Alone in its program: fonts are looked for once in each.
class FontsAheadTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theConfigurationIsReadAtOnceAndNobodyWaits()
    {
        const QTemporaryDir folder;
        const QByteArray pipe = QFile::encodeName(folder.filePath(QStringLiteral("fonts.conf")));
        QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
        qputenv("FONTCONFIG_FILE", pipe);
        readFontsAhead();

        int writer = -1;
        // Without a reader there is nothing to write to.
        QVERIFY(QTest::qWaitFor([&] {
            writer = ::open(pipe.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
            return writer >= 0;
        }));
        const QByteArray configuration = "<fontconfig></fontconfig>\n";
        QCOMPARE(::write(writer, configuration.constData(), size_t(configuration.size())), configuration.size());
        ::close(writer);
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
    }
};

MOORLINE_TEST(FontsAheadTest);

} // namespace moorline::test

#include "FontsAheadTest.moc"
