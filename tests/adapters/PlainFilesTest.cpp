#include "platform/linux/desktop/PlainFiles.h"

#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace moorline;

class PlainFilesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileIsShownUnderTheLastPartOfItsPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *name, const QString &path, const QString &expected) {
            QTest::newRow(name) << path << expected;
        };
        row("a file", QStringLiteral("/nowhere/letter.txt"), QStringLiteral("letter.txt"));
        row("without an extension", QStringLiteral("/nowhere/letter"), QStringLiteral("letter"));
        row("hidden", QStringLiteral("/nowhere/.profile"), QStringLiteral(".profile"));
        row("several dots", QStringLiteral("/nowhere/a.tar.gz"), QStringLiteral("a.tar.gz"));
        row("spaces", QStringLiteral("/no where/ a letter "), QStringLiteral(" a letter "));
        row("beyond ASCII", QStringLiteral("/nowhere/日本 Grüße"), QStringLiteral("日本 Grüße"));
        row("a folder", QStringLiteral("/nowhere/folder/"), QStringLiteral("folder"));
        row("slashes behind", QStringLiteral("/nowhere/folder///"), QStringLiteral("folder"));
        row("slashes within", QStringLiteral("/nowhere//letter"), QStringLiteral("letter"));
        row("a bare name", QStringLiteral("letter"), QStringLiteral("letter"));
        row("dots alone", QStringLiteral("/nowhere/.."), QStringLiteral(".."));
        row("the root", QStringLiteral("/"), QStringLiteral("/"));
        row("the root, often", QStringLiteral("//"), QStringLiteral("/"));
        row("nothing", QString(), QString());
    }

    void aFileIsShownUnderTheLastPartOfItsPath()
    {
        QFETCH(QString, path);
        QTEST(PlainFiles().displayName(path), "name");
    }

    void whatIsThereHasTheSameName()
    {
        const QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("folder"));
        const QString link = root.filePath(QStringLiteral("link"));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(QFile::link(folder, link));
        QCOMPARE(PlainFiles().displayName(folder), QStringLiteral("folder"));
        QCOMPARE(PlainFiles().displayName(link), QStringLiteral("link"));
    }

    /// A desktop entry is a file as any other here: pinned as a file, it keeps its name.
    void aDesktopEntryKeepsTheNameOfItsFile()
    {
        const QTemporaryDir root;
        const QString path = root.filePath(QStringLiteral("editor.desktop"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Editor\nExec=true\n");
        file.close();
        QCOMPARE(PlainFiles().displayName(path), QStringLiteral("editor.desktop"));
    }
};

MOORLINE_TEST(PlainFilesTest);
#include "PlainFilesTest.moc"
