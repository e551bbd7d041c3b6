#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakePanelWindow.h"
#include "fakes/FakePointer.h"
#include "fakes/FakePopupWindows.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSystem.h"

#include "chrome/BarStage.h"
#include "chrome/HelpTag.h"
#include "chrome/MenuRow.h"
#include "chrome/MenuView.h"
#include "chrome/Popover.h"
#include "theme/Symbols.h"

#include <QGraphicsScene>
#include <QGraphicsWidget>

namespace moorline::test {

class TestContent final : public PopoverContent {
public:
    explicit TestContent(bool needsKeyboard = false)
        : m_needsKeyboard(needsKeyboard)
    {
    }

    [[nodiscard]] bool wantsKeyboard() const override { return m_needsKeyboard; }
    [[nodiscard]] QSize sizeHint() const override { return size; }

    void grow(const QSize &newSize)
    {
        size = newSize;
        updateGeometry();
    }

    QSize size{200, 150};

private:
    bool m_needsKeyboard;
};

/// A panel of 600 by 98 points at the bottom of the screen, with two icons on its pill.
struct StageFixture {
    StageFixture()
    {
        panel.frames = {panelFrame};
        stage.setBody(rectangle({80, 13, 440, 72}));
        scene.addItem(icon = makeIcon(280));
        scene.addItem(other = makeIcon(380));
    }

    static QPainterPath rectangle(const QRectF &rect)
    {
        QPainterPath path;
        path.addRect(rect);
        return path;
    }

    static QGraphicsWidget *makeIcon(qreal x)
    {
        auto *widget = new QGraphicsWidget;
        widget->setGeometry(x, 26, 46, 46);
        return widget;
    }

    Menu menu()
    {
        return {{.title = QStringLiteral("Open"), .action = [this] { chosen.append(QStringLiteral("Open")); }},
            MenuItem::separator(), {.title = QStringLiteral("Pin"), .action = nullptr},
            {.title = QStringLiteral("Quit"),
                .action = [this] { chosen.append(QStringLiteral("Quit")); },
                .isChecked = true}};
    }

    /// A menu that the bar draws itself.
    const MenuView &openOwnMenu(QGraphicsWidget &anchor)
    {
        stage.openMenu(anchor, menu());
        return dynamic_cast<const MenuView &>(*open());
    }

    TestContent &openPopover(QGraphicsWidget &anchor, bool needsKeyboard = false)
    {
        auto content = std::make_unique<TestContent>(needsKeyboard);
        TestContent &answer = *content;
        stage.openPopover(anchor, std::move(content));
        return answer;
    }

    /// The middle of a part of what is open, in the coordinates of the scene.
    [[nodiscard]] QPointF inScene(const QWidget &part) const
    {
        const QPointF middle = part.mapTo(part.window(), part.rect().center());
        const QRectF frame = open()->frame();
        return {frame.x() + middle.x() - panelFrame.x(), panelFrame.bottom() - (frame.bottom() - middle.y())};
    }

    /// The menu or popover that is open. Null when none is.
    [[nodiscard]] BarPopup *open() const
    {
        for (QWidget *widget : windows.shown) {
            auto *popup = dynamic_cast<BarPopup *>(widget);
            if (popup && popup != &stage.helpTag())
                return popup;
        }
        return nullptr;
    }

    const QRectF panelFrame{420, -11, 600, 98};
    FakePopupWindows windows;
    FakeScreens screens;
    FakePanelWindow panel;
    FakePointer pointer;
    FakeClock clock;
    FakeSymbolCatalogue images;
    Symbols symbols{images};
    BarHolds holds;
    QStringList chosen;
    QGraphicsScene scene;
    QGraphicsWidget *icon = nullptr;
    QGraphicsWidget *other = nullptr;
    BarStage stage{{windows, screens, panel, pointer, clock, symbols, holds}};
};

} // namespace moorline::test
