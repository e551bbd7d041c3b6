#include "platform/KeyEquivalent.h"
#include "harness/TestCase.h"

using namespace moorline;

class KeyEquivalentTest final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aCharacterIsTypedWithoutShift_data();
    void aCharacterIsTypedWithoutShift();
    void whatIsHeldIsNamedAsMacOSDoes_data();
    void whatIsHeldIsNamedAsMacOSDoes();
    void whatNoMenuCanShowIsAbsent_data();
    void whatNoMenuCanShowIsAbsent();
};

void KeyEquivalentTest::aCharacterIsTypedWithoutShift_data()
{
    QTest::addColumn<QKeySequence>("shortcut");
    QTest::addColumn<QString>("character");

    QTest::newRow("letter") << QKeySequence(Qt::CTRL | Qt::Key_Q) << QStringLiteral("q");
    QTest::newRow("letter with Shift") << QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Q) << QStringLiteral("q");
    QTest::newRow("comma") << QKeySequence(Qt::CTRL | Qt::Key_Comma) << QStringLiteral(",");
    QTest::newRow("digit") << QKeySequence(Qt::CTRL | Qt::Key_1) << QStringLiteral("1");
    QTest::newRow("space") << QKeySequence(Qt::CTRL | Qt::Key_Space) << QStringLiteral(" ");
    QTest::newRow("letter of another alphabet") << QKeySequence(Qt::CTRL | Qt::Key_Odiaeresis) << QStringLiteral("ö");
}

void KeyEquivalentTest::aCharacterIsTypedWithoutShift()
{
    QFETCH(const QKeySequence, shortcut);
    QTEST(keyEquivalentOf(shortcut).value().character, "character");
}

void KeyEquivalentTest::whatIsHeldIsNamedAsMacOSDoes_data()
{
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::addColumn<bool>("command");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<bool>("option");
    QTest::addColumn<bool>("control");

    QTest::newRow("nothing") << Qt::NoModifier << false << false << false << false;
    QTest::newRow("Ctrl") << Qt::ControlModifier << true << false << false << false;
    QTest::newRow("Shift") << Qt::ShiftModifier << false << true << false << false;
    QTest::newRow("Alt") << Qt::AltModifier << false << false << true << false;
    QTest::newRow("Meta") << Qt::MetaModifier << false << false << false << true;
}

void KeyEquivalentTest::whatIsHeldIsNamedAsMacOSDoes()
{
    QFETCH(const Qt::KeyboardModifier, modifier);
    QFETCH(const bool, command);
    QFETCH(const bool, shift);
    QFETCH(const bool, option);
    QFETCH(const bool, control);

    const auto keys = keyEquivalentOf(QKeySequence(QKeyCombination(modifier, Qt::Key_A)));

    QCOMPARE(keys,
        (KeyEquivalent{.character = QStringLiteral("a"),
            .command = command,
            .shift = shift,
            .option = option,
            .control = control}));
}

void KeyEquivalentTest::whatNoMenuCanShowIsAbsent_data()
{
    QTest::addColumn<QKeySequence>("shortcut");

    QTest::newRow("none") << QKeySequence();
    QTest::newRow("keys in turn") << QKeySequence(Qt::CTRL | Qt::Key_K, Qt::CTRL | Qt::Key_S);
    QTest::newRow("a key without a character") << QKeySequence(Qt::CTRL | Qt::Key_F5);
    QTest::newRow("an unknown key") << QKeySequence(Qt::Key_unknown);
}

void KeyEquivalentTest::whatNoMenuCanShowIsAbsent()
{
    QFETCH(const QKeySequence, shortcut);
    QVERIFY(!keyEquivalentOf(shortcut));
}

MOORLINE_TEST(KeyEquivalentTest);
#include "KeyEquivalentTest.moc"
