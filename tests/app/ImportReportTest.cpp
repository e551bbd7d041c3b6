#include "app/ImportReport.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

class ImportReportTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void namesWhatWasAddedAndWhatWasNotFound()
    {
        DockImporter::Result result;
        result.added = {
            {QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.example.notes"), QStringLiteral("Notes")}};
        result.unresolved = {QStringLiteral("Gone"), QStringLiteral("Unknown")};
        QCOMPARE(importReport(result, 4),
            (QStringList{QStringLiteral("imported: Notes — /Applications/Notes.app"),
                QStringLiteral("skipped (not found): Gone"), QStringLiteral("skipped (not found): Unknown"),
                QStringLiteral("total pinned apps now: 4")}));
    }

    void anImportThatAddsNothingGivesTheTotalAlone()
    {
        QCOMPARE(importReport({}, 1), QStringList{QStringLiteral("total pinned apps now: 1")});
    }
};

MOORLINE_TEST(ImportReportTest);

#include "ImportReportTest.moc"
