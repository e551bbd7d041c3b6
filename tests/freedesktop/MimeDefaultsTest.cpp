#include "freedesktop/MimeDefaults.h"
#include "harness/TestCase.h"

namespace {

using moorline::MimeChoice;
using moorline::MimeDefaults;

const QString folders = QStringLiteral("inode/directory");

QStringList ids(const char *names)
{
    return QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
}

class MimeDefaultsTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whoSaysItOpensATypeIsEnough()
    {
        QCOMPARE(MimeDefaults().candidates(folders, ids("a.desktop b.desktop")), ids("a.desktop b.desktop"));
    }

    void theChosenComeFirstAndTheFileThatCountsMostBeforeTheOthers()
    {
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.defaults = ids("mine.desktop other.desktop")});
        defaults.append(folders, MimeChoice{.defaults = ids("system.desktop mine.desktop")});
        QCOMPARE(defaults.candidates(folders, ids("declared.desktop")),
            ids("mine.desktop other.desktop system.desktop declared.desktop"));
    }

    void theAddedComeBetweenTheChosenAndTheDeclared()
    {
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.added = ids("added.desktop")});
        defaults.append(folders, MimeChoice{.defaults = ids("chosen.desktop")});
        QCOMPARE(defaults.candidates(folders, ids("declared.desktop")),
            ids("chosen.desktop added.desktop declared.desktop"));
    }

    void whatAFileRemovesIsNotWhatFilesBelowItAddOrEntriesDeclare()
    {
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.added = ids("kept.desktop"), .removed = ids("a.desktop b.desktop")});
        defaults.append(folders, MimeChoice{.added = ids("a.desktop c.desktop"), .removed = ids("kept.desktop")});
        QCOMPARE(defaults.candidates(folders, ids("b.desktop d.desktop")), ids("kept.desktop c.desktop d.desktop"));
    }

    void whatOneFileAddsItDoesNotTakeAway()
    {
        MimeDefaults defaults;
        defaults.append(folders, MimeChoice{.added = ids("a.desktop"), .removed = ids("a.desktop b.desktop")});
        QCOMPARE(defaults.candidates(folders, ids("b.desktop")), ids("a.desktop"));
    }

    void anotherTypesChoiceIsNone()
    {
        MimeDefaults defaults;
        defaults.append(QStringLiteral("text/html"), MimeChoice{.defaults = ids("browser.desktop")});
        QCOMPARE(defaults.candidates(folders, {}), QStringList());
    }
};

MOORLINE_TEST(MimeDefaultsTest);

} // namespace

#include "MimeDefaultsTest.moc"
