#include "chrome/MenuView.h"

#include "StageFixture.h"
#include "harness/TestCase.h"

#include <QAccessible>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// Open, a line, Pin (which leads nowhere), Quit (which is checked).
struct Stage : StageFixture {
    [[nodiscard]] MenuRow &row(qsizetype index) const { return *view.rows().at(index); }
    [[nodiscard]] QString highlighted() const
    {
        for (const MenuRow *row : view.rows()) {
            if (row->isHighlighted())
                return row->text();
        }
        return {};
    }
    void type(Qt::Key key) { QTest::keyClick(&view, key); }
    void hover(qsizetype index)
    {
        QEnterEvent event(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(&row(index), &event);
    }

    MenuView view{windows, symbols, menu(), QColor(Qt::blue)};
};

} // namespace

class MenuViewTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theRowsAreTheItemsInOrder()
    {
        const Stage stage;
        QStringList titles;
        for (const MenuRow *row : stage.view.rows())
            titles.append(row->text());
        QCOMPARE(titles, (QStringList{QStringLiteral("Open"), QStringLiteral("Pin"), QStringLiteral("Quit")}));
        QVERIFY(stage.row(0).isEnabled());
        QVERIFY(!stage.row(1).isEnabled());
        QVERIFY(!stage.row(0).isChecked());
        QVERIFY(stage.row(2).isChecked());
    }

    void theMarkOfACheckedItemIsTheCheckMark()
    {
        Stage stage;
        stage.view.grab();
        QVERIFY(std::any_of(stage.images.requests.begin(), stage.images.requests.end(),
            [](const SymbolRequest &request) { return request.name == QStringLiteral("checkmark"); }));
    }

    void theSizeIsThatOfTheRows()
    {
        const Stage stage;
        // Three rows of 24 points, a separator of 9, and 5 points above and below.
        QCOMPARE(stage.view.naturalSize().height(), 3 * 24 + 9 + 2 * 5);
    }

    void theArrowKeysPassOverWhatCannotBeChosen()
    {
        Stage stage;
        QCOMPARE(stage.highlighted(), QString());
        for (const QString &expected : {QStringLiteral("Open"), QStringLiteral("Quit"), QStringLiteral("Open")}) {
            stage.type(Qt::Key_Down);
            QCOMPARE(stage.highlighted(), expected);
        }
        stage.type(Qt::Key_Up);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        stage.type(Qt::Key_Up);
        QCOMPARE(stage.highlighted(), QStringLiteral("Open"));
    }

    void theFirstUpLeadsToTheLast()
    {
        Stage stage;
        stage.type(Qt::Key_Up);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        stage.type(Qt::Key_Home);
        QCOMPARE(stage.highlighted(), QStringLiteral("Open"));
        stage.type(Qt::Key_End);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
    }

    void aLetterLeadsToTheNextItemThatBeginsWithIt()
    {
        Stage stage;
        stage.type(Qt::Key_Q);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        stage.type(Qt::Key_P);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        stage.type(Qt::Key_O);
        QCOMPARE(stage.highlighted(), QStringLiteral("Open"));
    }

    void returnAndSpaceChoose()
    {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            Stage stage;
            const QSignalSpy dismissed(&stage.view, &MenuView::dismissed);
            stage.type(key);
            QCOMPARE(stage.chosen, QStringList());
            stage.type(Qt::Key_Down);
            stage.type(key);
            QCOMPARE(stage.chosen, QStringList{QStringLiteral("Open")});
            QCOMPARE(dismissed.size(), 1);
        }
    }

    void keysReachTheMenuThroughTheRowThatHasThem()
    {
        Stage stage;
        stage.type(Qt::Key_Down);
        QTest::keyClick(&stage.row(0), Qt::Key_Down);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        QTest::keyClick(&stage.row(2), Qt::Key_Space);
        QCOMPARE(stage.chosen, QStringList{QStringLiteral("Quit")});
    }

    void aClickChooses()
    {
        Stage stage;
        QTest::mouseClick(&stage.row(2), Qt::LeftButton);
        QCOMPARE(stage.chosen, QStringList{QStringLiteral("Quit")});
        QTest::mouseClick(&stage.row(1), Qt::LeftButton);
        QCOMPARE(stage.chosen.size(), 1);
    }

    void thePointerHighlights()
    {
        Stage stage;
        stage.hover(2);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        stage.hover(1);
        QCOMPARE(stage.highlighted(), QStringLiteral("Quit"));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&stage.row(2), &leave);
        QCOMPARE(stage.highlighted(), QString());
    }

    void theHighlightIsPainted()
    {
        Stage stage;
        stage.view.resize(stage.view.naturalSize().toSize());
        stage.hover(0);
        const QImage image = stage.view.grab().toImage();
        QCOMPARE(image.pixelColor(stage.row(0).geometry().center().x(), stage.row(0).geometry().top() + 2),
            QColor(Qt::blue));
        QVERIFY(image.pixelColor(stage.row(2).geometry().center().x(), stage.row(2).geometry().top() + 2)
            != QColor(Qt::blue));
    }

    void aScreenReaderIsToldWhatTheRowsAre()
    {
        Stage stage;
        QAccessibleInterface *menu = QAccessible::queryAccessibleInterface(&stage.view);
        QCOMPARE(menu->role(), QAccessible::PopupMenu);
        QAccessibleInterface *quit = QAccessible::queryAccessibleInterface(&stage.row(2));
        QCOMPARE(quit->role(), QAccessible::MenuItem);
        QCOMPARE(quit->text(QAccessible::Name), QStringLiteral("Quit"));
        QVERIFY(quit->state().checkable);
        QVERIFY(quit->state().checked);
        QAccessibleInterface *pin = QAccessible::queryAccessibleInterface(&stage.row(1));
        QVERIFY(pin->state().disabled);
        QVERIFY(pin->actionInterface()->actionNames().isEmpty());
        quit->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(stage.chosen, QStringList{QStringLiteral("Quit")});
    }
};

MOORLINE_TEST(MenuViewTest);

#include "MenuViewTest.moc"
