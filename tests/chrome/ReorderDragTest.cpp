#include "chrome/ReorderDrag.h"

#include "StageFixture.h"
#include "TrialItem.h"
#include "harness/TestCase.h"

#include <QApplication>
#include <QDrag>
#include <QPixmap>
#include <QPointer>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString files = QStringLiteral("text/uri-list");

class Row;

/// An icon that can be dragged to another place among its like.
class Tile final : public BarItem {
public:
    Tile(Row &row, QString id);

    using BarItem::DragEnd;

    const QString id;
    QList<DragEnd> ends;

protected:
    void drag(const QPointF &place) override;
    void dragEnded(DragEnd end) override;
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override { return formats.contains(files); }
    [[nodiscard]] bool takesReorder(const QString &reordered) const override;
    void reorderMoved(const QString &reordered, const QPointF &place) override;

private:
    Row &m_row;
};

/// Icons of 40 points, one beside the other, that change places as soon as one is carried over another.
class Row final : public BarItem {
public:
    explicit Row(const QStringList &ids)
    {
        setGeometry(10, 10, 40 * qreal(ids.size()), 40);
        setAcceptDrops(true);
        for (const QString &id : ids)
            tiles.append(new Tile(*this, id));
        arrange();
    }

    [[nodiscard]] QString order() const
    {
        QString ids;
        for (const Tile *tile : tiles)
            ids += tile->id;
        return ids;
    }

    void arrange()
    {
        for (qsizetype i = 0; i < tiles.size(); ++i)
            tiles[i]->setGeometry(40 * qreal(i), 0, 40, 40);
    }

    void begin(const Tile &tile)
    {
        carried = tile.id;
        before = tiles;
        // In the event loop of the system's drag.
        if (onDrag)
            onDrag();
    }

    void carryOver(Tile &target, const QPointF &place)
    {
        places.append(place);
        const auto from = std::find_if(tiles.begin(), tiles.end(), [this](Tile *tile) { return tile->id == carried; });
        tiles.move(from - tiles.begin(), tiles.indexOf(&target));
        arrange();
    }

    void end(Tile::DragEnd end)
    {
        carried.clear();
        if (end == Tile::DragEnd::cancelled)
            tiles = before;
        arrange();
    }

    QList<Tile *> tiles;
    QList<Tile *> before;
    QString carried;
    /// Where the pointer led it, of the scene.
    QList<QPointF> places;
    std::function<void()> onDrag;
};

Tile::Tile(Row &row, QString tileId)
    : BarItem(&row)
    , id(std::move(tileId))
    , m_row(row)
{
    setTouchable(true);
    setAcceptDrops(true);
    setDraggable(DragKind::out);
    connect(this, &BarItem::draggedChanged, this, [this] { setOpacity(isDragged() ? 0.35 : 1); });
}

void Tile::drag(const QPointF &)
{
    m_row.begin(*this);
}

void Tile::dragEnded(DragEnd end)
{
    ends.append(end);
    m_row.end(end);
}

bool Tile::takesReorder(const QString &reordered) const
{
    return m_row.carried == reordered;
}

void Tile::reorderMoved(const QString &, const QPointF &place)
{
    m_row.carryOver(*this, place);
}

struct Bar : Hand {
    Bar()
    {
        scene.addItem(row);
        row->setStage(&above.stage);
        QApplication::setStartDragDistance(10);
    }

    void dragFirst()
    {
        press({20, 30});
        move({40, 30});
    }

    Qt::DropAction carryTo(const QPoint &place) { return dragOver(place, first, Qt::MoveAction); }
    Qt::DropAction dropAt(const QPoint &place) { return letGo(place, first, Qt::MoveAction); }

    const ReorderPayload first{QStringLiteral("a")};
    Row *row = new Row({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    Tile *tile = row->tiles.first();
    StageFixture above;
};

/// What another program could offer.
class Foreign final : public QMimeData {
public:
    [[nodiscard]] QStringList formats() const override { return ReorderPayload(QStringLiteral("a")).formats(); }
};

} // namespace

class ReorderDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theRowChangesAsItIsPassedOver()
    {
        Bar bar;
        bar.row->onDrag = [&bar] {
            QVERIFY(bar.tile->isDragged());
            QCOMPARE(bar.tile->opacity(), 0.35);
            QCOMPARE(bar.carryTo({70, 30}), Qt::MoveAction);
            QCOMPARE(bar.row->order(), QStringLiteral("bac"));
            QCOMPARE(bar.carryTo({110, 30}), Qt::MoveAction);
            QCOMPARE(bar.row->order(), QStringLiteral("bca"));
            // It came to lie below the pointer.
            QCOMPARE(bar.carryTo({111, 30}), Qt::MoveAction);
            QCOMPARE(bar.row->order(), QStringLiteral("bca"));
            QVERIFY(bar.tile->isDragged());
            QVERIFY(bar.above.holds.isHeld());
            QCOMPARE(bar.dropAt({111, 30}), Qt::MoveAction);
            QVERIFY(bar.tile->ends.isEmpty());
        };
        bar.dragFirst();
        QCOMPARE(bar.tile->ends, QList{Tile::DragEnd::letGo});
        QCOMPARE(bar.row->order(), QStringLiteral("bca"));
        QCOMPARE(bar.row->places, (QList<QPointF>{{70, 30}, {110, 30}, {111, 30}}));
        QCOMPARE(bar.tile->opacity(), 1.0);
        QVERIFY(!bar.above.holds.isHeld());
    }

    void escapePutsTheOrderBackWhereverTheButtonIsLetGo()
    {
        Bar bar;
        bar.row->onDrag = [&bar] {
            QCOMPARE(bar.carryTo({70, 30}), Qt::MoveAction);
            bar.above.windows.pressEscape();
            QCOMPARE(bar.above.windows.cancelledDrags, 1);
            // Where the system goes on with the drag until the button is let go.
            QCOMPARE(bar.carryTo({110, 30}), Qt::IgnoreAction);
            QCOMPARE(bar.row->order(), QStringLiteral("bac"));
            QCOMPARE(bar.dropAt({110, 30}), Qt::IgnoreAction);
        };
        bar.dragFirst();
        QCOMPARE(bar.tile->ends, QList{Tile::DragEnd::cancelled});
        QCOMPARE(bar.row->order(), QStringLiteral("abc"));
    }

    void whatLeavesTheRowMeanwhileIsTakenByNobody()
    {
        Bar bar;
        const QPointer<Tile> tile = bar.tile;
        bar.row->onDrag = [&bar] {
            bar.tile->retire();
            QCOMPARE(bar.carryTo({70, 30}), Qt::IgnoreAction);
            QCOMPARE(bar.dropAt({70, 30}), Qt::IgnoreAction);
        };
        bar.dragFirst();
        QCOMPARE(tile->ends, QList{Tile::DragEnd::cancelled});
        QVERIFY(bar.row->places.isEmpty());
    }

    void onlyFilesLightUpWhatTheyAreHeldOver()
    {
        Bar bar;
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
        QCOMPARE(bar.dragOver({70, 30}, dropped, Qt::CopyAction), Qt::CopyAction);
        QVERIFY(bar.row->tiles[1]->isDropHovered());
        QVERIFY(bar.row->places.isEmpty());
        bar.dragAway();
        bar.row->carried = QStringLiteral("a");
        QCOMPARE(bar.carryTo({70, 30}), Qt::MoveAction);
        for (const Tile *tile : bar.row->tiles)
            QVERIFY(!tile->isDropHovered());
    }

    void anotherRowHasNothingToDoWithIt()
    {
        Bar bar;
        QCOMPARE(bar.carryTo({70, 30}), Qt::IgnoreAction);
        QCOMPARE(bar.dropAt({70, 30}), Qt::IgnoreAction);
        QVERIFY(bar.row->places.isEmpty());
    }

    void theFormatAloneReordersNothing()
    {
        Bar bar;
        bar.row->carried = QStringLiteral("a");
        QCOMPARE(bar.dragOver({70, 30}, Foreign(), Qt::MoveAction | Qt::CopyAction), Qt::IgnoreAction);
        QVERIFY(bar.row->places.isEmpty());
    }

    void otherProgramsLearnNothing()
    {
        const ReorderPayload payload(QStringLiteral("/usr/share/applications/a.desktop"));
        QCOMPARE(payload.id(), QStringLiteral("/usr/share/applications/a.desktop"));
        QCOMPARE(payload.formats(), QStringList{QStringLiteral("app.moorline.Moorline.reorder")});
        QVERIFY(payload.data(payload.formats().first()).isEmpty());
    }

    void itIsCarriedAsAMoveWithItsPicture()
    {
        Bar bar;
        QPixmap picture(48, 48);
        picture.fill(Qt::red);
        carryReordered(*bar.tile, QStringLiteral("a"), picture, {24, 20});
        const auto *drag = bar.scene.views().first()->findChild<QDrag *>();
        QVERIFY(drag);
        const auto *payload = dynamic_cast<const ReorderPayload *>(drag->mimeData());
        QVERIFY(payload);
        QCOMPARE(payload->id(), QStringLiteral("a"));
        QCOMPARE(drag->supportedActions(), Qt::DropActions(Qt::MoveAction));
        QCOMPARE(drag->pixmap().size(), QSize(48, 48));
        QCOMPARE(drag->hotSpot(), QPoint(24, 20));
    }

    void withoutAViewNothingIsCarried()
    {
        const Row row({QStringLiteral("a")});
        carryReordered(*row.tiles.first(), QStringLiteral("a"), {}, {});
        QGraphicsScene scene;
        auto *shown = new Row({QStringLiteral("a")});
        scene.addItem(shown);
        carryReordered(*shown->tiles.first(), QStringLiteral("a"), {}, {});
    }
};

MOORLINE_TEST(ReorderDragTest);

#include "ReorderDragTest.moc"
