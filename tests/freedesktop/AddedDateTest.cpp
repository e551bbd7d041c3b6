#include "freedesktop/AddedDate.h"
#include "freedesktop/TrashPlaces.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace std::chrono_literals;

namespace {

using Time = FileTimes::Time;

constexpr Time monday{1'000'000s};

} // namespace

class AddedDateTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileMadeInTheFolderCameWithItsBirth()
    {
        QCOMPARE(addedDate({.birth = monday, .modified = monday + 1s, .changed = monday + 1s}), std::optional(monday));
    }
    void whatIsWrittenLaterCameNoLater()
    {
        QCOMPARE(
            addedDate({.birth = monday, .modified = monday + 1h, .changed = monday + 1h + 2s}), std::optional(monday));
    }
    void whatWasMovedThereCameWhenItChanged()
    {
        QCOMPARE(addedDate({.birth = monday, .modified = monday + 1h, .changed = monday + 1h + 2001ms}),
            std::optional<Time>(monday + 1h + 2001ms));
    }
    void anOldModificationDateSaysNothing()
    {
        QCOMPARE(
            addedDate({.birth = monday, .modified = monday - 720h, .changed = monday + 2s}), std::optional(monday));
        QCOMPARE(addedDate({.birth = monday, .modified = monday - 720h, .changed = monday + 3s}),
            std::optional<Time>(monday + 3s));
    }
    void withoutABirthNobodyCanTell()
    {
        QCOMPARE(addedDate({.modified = monday, .changed = monday + 1h}), std::nullopt);
    }

    void everyVolumeHasTwoPlacesForATrash()
    {
        QCOMPARE(trashPlaces("/home/me/.local/share/Trash", {"/", "/media/stick"}, 1000),
            (QList<TrashPlace>{{.folder = "/home/me/.local/share/Trash"},
                {.folder = "/.Trash/1000", .shared = "/.Trash"}, {.folder = "/.Trash-1000"},
                {.folder = "/media/stick/.Trash/1000", .shared = "/media/stick/.Trash"},
                {.folder = "/media/stick/.Trash-1000"}}));
    }
};

MOORLINE_TEST(AddedDateTest);
#include "AddedDateTest.moc"
