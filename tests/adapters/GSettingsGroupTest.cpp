#include "platform/linux/glib/GSettingsGroup.h"
#include "harness/TestCase.h"

#include <cmath>
#include <limits>

namespace {

using moorline::GSettingsGroup;

const QByteArray schema("app.moorline.Test");
const QByteArray movable("app.moorline.Test.Movable");

GSettingsGroup group()
{
    return GSettingsGroup::open(schema).value();
}

class GSettingsGroupTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsNotInstalledIsAbsent() { QVERIFY(!GSettingsGroup::open("app.moorline.NotInstalled")); }

    void aSchemaIsFoundInAFolderOfItsOwn()
    {
        const QByteArray dock("org.gnome.shell.extensions.dash-to-dock");
        const QString folder = qEnvironmentVariable("MOORLINE_TEST_EXTENSION_SCHEMAS");
        QVERIFY(!folder.isEmpty());
        QVERIFY(!GSettingsGroup::open(dock, {}, QStringLiteral("/nowhere")));
        const auto found = GSettingsGroup::open(dock, {}, folder);
        QVERIFY(found);
        QCOMPARE(found->text("dock-position"), QStringLiteral("BOTTOM"));
    }

    void aMovableSchemaNeedsASoundPath()
    {
        QVERIFY(GSettingsGroup::open(movable, "/app/moorline/one/"));
        for (const QByteArray path : {"", "app/", "/app", "/app//one/"})
            QVERIFY2(!GSettingsGroup::open(movable, path), path.constData());
    }

    void groupsAtDifferentPathsAreApart()
    {
        auto one = GSettingsGroup::open(movable, "/app/moorline/one/").value();
        const auto two = GSettingsGroup::open(movable, "/app/moorline/two/").value();
        QVERIFY(one.setBoolean("flag", true));
        QCOMPARE(one.boolean("flag"), true);
        QCOMPARE(two.boolean("flag"), false);
    }

    void aFixedSchemaTakesNoPath() { QVERIFY(!GSettingsGroup::open(schema, "/elsewhere/")); }

    void eachTypeIsRead()
    {
        QCOMPARE(group().boolean("flag"), true);
        QCOMPARE(group().number("ratio"), 0.25);
        QCOMPARE(group().number("whole"), -7.0);
        QCOMPARE(group().number("natural"), 7.0);
        QCOMPARE(group().text("word"), QStringLiteral("a word"));
        QCOMPARE(group().text("season"), QStringLiteral("summer"));
        QCOMPARE(group().texts("words"), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    }

    void aMissingKeyIsAbsent()
    {
        QCOMPARE(group().boolean("missing"), std::nullopt);
        QCOMPARE(group().number("missing"), std::nullopt);
        QCOMPARE(group().text("missing"), std::nullopt);
        QCOMPARE(group().texts("missing"), std::nullopt);
    }

    void aValueOfAnotherTypeIsAbsent()
    {
        QCOMPARE(group().boolean("word"), std::nullopt);
        QCOMPARE(group().number("flag"), std::nullopt);
        QCOMPARE(group().text("words"), std::nullopt);
        QCOMPARE(group().texts("word"), std::nullopt);
    }

    void whatIsSetIsReadBack()
    {
        auto settings = group();
        QVERIFY(settings.setBoolean("flag", false));
        QVERIFY(settings.setNumber("ratio", 1.5));
        QVERIFY(settings.setNumber("whole", -2.6));
        QVERIFY(settings.setNumber("natural", 250.4));
        QVERIFY(settings.setText("word", QStringLiteral("another")));
        QVERIFY(settings.setText("season", QStringLiteral("winter")));
        QCOMPARE(group().boolean("flag"), false);
        QCOMPARE(group().number("ratio"), 1.5);
        QCOMPARE(group().number("whole"), -3.0);
        QCOMPARE(group().number("natural"), 250.0);
        QCOMPARE(group().text("word"), QStringLiteral("another"));
        QCOMPARE(group().text("season"), QStringLiteral("winter"));
    }

    void whatDoesNotFitIsRefused()
    {
        auto settings = group();
        QVERIFY(!settings.setBoolean("missing", true));
        QVERIFY(!settings.setBoolean("word", true));
        QVERIFY(!settings.setText("flag", QStringLiteral("true")));
        QVERIFY(!settings.setText("season", QStringLiteral("spring")));
        QVERIFY(!settings.setNumber("word", 1));
        QVERIFY(!settings.setNumber("missing", 1));
        QVERIFY(!settings.setNumber("small", 11));
        QVERIFY(!settings.setNumber("natural", -1));
        QVERIFY(!settings.setNumber("whole", 1e12));
        QVERIFY(!settings.setNumber("ratio", std::nan("")));
        QVERIFY(!settings.setNumber("ratio", std::numeric_limits<double>::infinity()));
        QCOMPARE(settings.number("small"), 5.0);
    }
};

MOORLINE_TEST(GSettingsGroupTest);

} // namespace

#include "GSettingsGroupTest.moc"
