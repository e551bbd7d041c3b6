#include "theme/TextFamily.h"

#include "fakes/FakeSystemFont.h"
#include "harness/TestCase.h"
#include "theme/Text.h"

#include <QApplication>
#include <QFontDatabase>

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr TextStyle style{.size = 20, .weight = QFont::DemiBold};

QStringList shownFamilies()
{
    return font(style).families();
}

/// One that is installed here and is not Qt's own choice.
QString anotherFamily()
{
    const QString own = QFontInfo(QApplication::font()).family();
    const QStringList all = QFontDatabase::families();
    for (const QString &family : all) {
        if (family != own && QFontDatabase::isSmoothlyScalable(family) && !QFontDatabase::isPrivateFamily(family))
            return family;
    }
    return {};
}

} // namespace

class TextFamilyTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_usual = shownFamilies();
        m_other = anotherFamily();
        QVERIFY(!m_other.isEmpty());
    }

    void cleanup()
    {
        QCOMPARE(shownFamilies(), m_usual);
        TestCase::cleanup();
    }

    void textsAreInTheFamilyOfTheSystem()
    {
        FakeSystemFont system;
        system.setFamily(m_other);
        const TextFamily family(system);
        QCOMPARE(shownFamilies(), QStringList(m_other));
        QCOMPARE(QFontInfo(font(style)).family(), m_other);
    }

    void itTellsNothingOfSizeAndWeight()
    {
        FakeSystemFont system;
        const TextFamily family(system);
        system.setFamily(m_other);
        QCOMPARE(font(style).pixelSize(), 20);
        QCOMPARE(font(style).weight(), QFont::DemiBold);
    }

    void aChangeIsFollowed()
    {
        FakeSystemFont system;
        const TextFamily family(system);
        QCOMPARE(shownFamilies(), m_usual);
        system.setFamily(m_other);
        QCOMPARE(shownFamilies(), QStringList(m_other));
        system.setFamily({});
        QCOMPARE(shownFamilies(), m_usual);
    }

    void whatIsNoFamilyCountsAsNone_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("not installed") << QStringLiteral("Hawsepipe Grotesk");
        QTest::newRow("a zero within") << m_other + QChar(u'\0') + m_other;
        QTest::newRow("a path") << QStringLiteral("/etc/passwd");
        QTest::newRow("long") << QString(1000000, u'x');
        QTest::newRow("blank") << QStringLiteral(" ");
        QTest::newRow("two of them") << m_other + QStringLiteral(", ") + m_other;
    }

    void whatIsNoFamilyCountsAsNone()
    {
        QFETCH(QString, name);
        FakeSystemFont system;
        system.setFamily(m_other);
        const TextFamily family(system);
        system.setFamily(name);
        QCOMPARE(shownFamilies(), m_usual);
    }

private:
    QStringList m_usual;
    QString m_other;
};

MOORLINE_TEST(TextFamilyTest);
#include "TextFamilyTest.moc"
