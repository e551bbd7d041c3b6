#include "platform/linux/icons/IconFinder.h"

#include "IconsOnDisk.h"
#include "harness/TestCase.h"
#include "platform/linux/icons/FileKinds.h"

#include <QFile>

namespace moorline::test {

namespace {

const QColor red(Qt::red);
const QColor blue(Qt::blue);
const QColor none;

} // namespace

class IconFinderTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<IconsOnDisk>();
        m_disk->writeTheme(QStringLiteral("system/Own"), {24, 48, 96});
        m_finder = std::make_unique<IconFinder>(m_disk->bases());
        m_finder->folders().setTheme(QStringLiteral("Own"));
    }

    void thePictureHasTheSizeAndTheScaleThatWereAsked_data()
    {
        QTest::addColumn<qreal>("size");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("side");
        QTest::addColumn<QColor>("color");
        QTest::newRow("46 points") << 46.0 << 1.0 << 46 << red;
        QTest::newRow("46 points, doubled") << 46.0 << 2.0 << 92 << blue;
        QTest::newRow("46 points, one and a half") << 46.0 << 1.5 << 69 << blue;
        QTest::newRow("45.5 points") << 45.5 << 1.0 << 46 << red;
        QTest::newRow("1024 points") << 1024.0 << 1.0 << 1024 << blue;
        QTest::newRow("more than that") << 1024.5 << 1.0 << 0 << none;
        QTest::newRow("more than that in pixels") << 600.0 << 2.0 << 0 << none;
        QTest::newRow("no points") << 0.0 << 1.0 << 0 << none;
        QTest::newRow("no scale") << 46.0 << 0.0 << 0 << none;
        QTest::newRow("no number") << qQNaN() << 1.0 << 0 << none;
        QTest::newRow("beyond all numbers") << 46.0 << qInf() << 0 << none;
    }
    void thePictureHasTheSizeAndTheScaleThatWereAsked()
    {
        QFETCH(const qreal, size);
        QFETCH(const qreal, scale);
        QFETCH(const int, side);
        writeIcon(48, QStringLiteral("app"), red);
        writeIcon(96, QStringLiteral("app"), blue);
        const QImage picture = m_finder->picture({IconKind::named, QStringLiteral("app"), size, scale});
        QCOMPARE(picture.size(), QSize(side, side));
        QTEST(middle(picture), "color");
        if (side > 0)
            QCOMPARE(picture.devicePixelRatio(), scale);
    }

    void anApplicationHasTheIconOfItsEntry_data()
    {
        QTest::addColumn<QByteArray>("icon");
        QTest::addColumn<QColor>("color");
        QTest::newRow("a name") << QByteArray("app") << red;
        QTest::newRow("a name with an extension") << QByteArray("app.png") << red;
        QTest::newRow("a path") << QByteArray("ROOT/elsewhere.png") << blue;
        QTest::newRow("a path that leads nowhere") << QByteArray("ROOT/nowhere.png") << none;
        QTest::newRow("a path out of the theme") << QByteArray("../../../../elsewhere") << none;
        QTest::newRow("another name") << QByteArray("other") << none;
        QTest::newRow("nothing") << QByteArray() << none;
    }
    void anApplicationHasTheIconOfItsEntry()
    {
        QFETCH(QByteArray, icon);
        writeIcon(48, QStringLiteral("app"), red);
        m_disk->writePng(QStringLiteral("elsewhere.png"), blue);
        icon.replace("ROOT", m_disk->path({}).toUtf8());
        const QString entry = m_disk->write(
            QStringLiteral("app.desktop"), "[Desktop Entry]\nType=Application\nName=App\nIcon=" + icon + "\n");
        QTEST(middle(m_finder->picture({IconKind::application, entry, 46, 1})), "color");
    }

    void anApplicationWithoutAnEntryHasNoIcon()
    {
        writeIcon(48, QStringLiteral("app"), red);
        QVERIFY(
            m_finder->picture({IconKind::application, m_disk->path(QStringLiteral("gone.desktop")), 46, 1}).isNull());
        const QString link = m_disk->write(
            QStringLiteral("link.desktop"), "[Desktop Entry]\nType=Link\nName=App\nIcon=app\nURL=http://localhost\n");
        QVERIFY(m_finder->picture({IconKind::application, link, 46, 1}).isNull());
    }

    void anApplicationWithoutAnIconHasThatOfAnyApplication_data()
    {
        QTest::addColumn<QByteArray>("entry");

        QTest::newRow("none at all") << QByteArray();
        QTest::newRow("no icon") << QByteArray("[Desktop Entry]\nType=Application\nName=App\n");
        QTest::newRow("a missing icon") << QByteArray("[Desktop Entry]\nType=Application\nName=App\nIcon=gone\n");
        QTest::newRow("a missing file") << QByteArray(
            "[Desktop Entry]\nType=Application\nName=App\nIcon=/nowhere/gone.png\n");
    }

    void anApplicationWithoutAnIconHasThatOfAnyApplication()
    {
        QFETCH(QByteArray, entry);
        writeIcon(48, QStringLiteral("application-x-executable"), red);
        QString path = m_disk->path(QStringLiteral("gone.desktop"));
        if (!entry.isEmpty())
            path = m_disk->write(QStringLiteral("app.desktop"), entry);
        QCOMPARE(middle(m_finder->picture({IconKind::application, path, 46, 1})), red);
    }

    void aFileWithoutAnIconHasThatOfAnyFile()
    {
        const QString gone = m_disk->path(QStringLiteral("gone.txt"));
        QVERIFY(ofFile(gone).isNull());
        writeIcon(48, QStringLiteral("text-x-generic"), red);
        QVERIFY(m_finder->folders().refresh());
        QCOMPARE(middle(ofFile(gone)), red);
    }

    void aFileHasTheIconOfItsType()
    {
        writeIcon(48, QStringLiteral("text-x-generic"), red);
        writeIcon(48, QStringLiteral("folder"), blue);
        const QString text = m_disk->write(QStringLiteral("notes.txt"), "notes");
        QCOMPARE(middle(ofFile(text)), red);
        QCOMPARE(middle(ofFile(m_disk->path({}))), blue);
    }

    void aSpecialTypeComesBeforeAGeneralOne()
    {
        writeIcon(48, QStringLiteral("text-x-generic"), red);
        writeIcon(48, QStringLiteral("text-plain"), blue);
        const QString text = m_disk->write(QStringLiteral("notes.txt"), "notes");
        QCOMPARE(middle(ofFile(text)), blue);
    }

    void iconsOfOneColourAreGivenOnlyToWhoAsks()
    {
        for (const char *name : {"text-plain-symbolic", "text-x-generic-symbolic", "folder-symbolic"})
            writeIcon(48, QString::fromLatin1(name), red);
        const QString text = m_disk->write(QStringLiteral("notes.txt"), "notes");
        QVERIFY(ofFile(text).isNull());
        QVERIFY(m_finder->picture({IconKind::named, QStringLiteral("folder"), 22, 1}).isNull());
        QCOMPARE(middle(m_finder->picture({IconKind::named, QStringLiteral("folder-symbolic"), 22, 1})), red);
    }

    void theNamesOfTheBodyAreThoseOfTheThemes_data()
    {
        QTest::addColumn<QString>("icon");
        QTest::newRow("NSTrashEmpty") << QStringLiteral("user-trash");
        QTest::newRow("NSTrashFull") << QStringLiteral("user-trash-full");
        QTest::newRow("NSFolder") << QStringLiteral("folder");
        QTest::newRow("mail-unread") << QStringLiteral("mail-unread");
    }
    void theNamesOfTheBodyAreThoseOfTheThemes()
    {
        QFETCH(const QString, icon);
        writeIcon(48, icon, red);
        QCOMPARE(
            middle(m_finder->picture({IconKind::named, QString::fromLatin1(QTest::currentDataTag()), 46, 1})), red);
    }

    void aDamagedFileIsNoIcon()
    {
        m_disk->write(QStringLiteral("system/Own/48x48/apps/app.png"), "damaged");
        QVERIFY(m_finder->picture({IconKind::named, QStringLiteral("app"), 46, 1}).isNull());
    }

private:
    void writeIcon(int size, const QString &name, const QColor &color) const
    {
        m_disk->writePng(QStringLiteral("system/Own/%1x%1/apps/%2.png").arg(size).arg(name), color, {size, size});
    }

    [[nodiscard]] QImage ofFile(const QString &path) const
    {
        return m_finder->picture({IconKind::file, path, 22, 1}, iconNamesOfFile(QFile::encodeName(path)));
    }

    std::unique_ptr<IconsOnDisk> m_disk;
    std::unique_ptr<IconFinder> m_finder;
};

MOORLINE_TEST(IconFinderTest);

} // namespace moorline::test

#include "IconFinderTest.moc"
