#pragma once

#include "TrialWidget.h"
#include "fakes/FakePlatform.h"
#include "fakes/SettingsGround.h"

#include "chrome/BarHolds.h"
#include "chrome/BarStage.h"
#include "dock/DockBarView.h"
#include "dock/DockWindowController.h"
#include "settings/Choices.h"
#include "system/SpaceProbe.h"
#include "system/SystemDock.h"
#include "theme/Symbols.h"

namespace moorline::test {

/// Everything a bar is built on, faked. The desktop's dock hides by itself until told otherwise.
struct DockFixture : FakePlatform {
    DockFixture() { preferences.setDock(QStringLiteral("bottom"), true); }

    /// Changes the settings through the store, as every view does.
    template <typename Change>
    void change(Change apply)
    {
        store.change(apply);
    }

    DockBarView::Context barContext()
    {
        return {
            .store = store,
            .systemDock = systemDock,
            .clock = clock,
            .screens = screens,
            .symbols = symbols,
            .stage = stage,
            .commands = commands,
            .makeWidget = [this](WidgetKind kind) { return makeWidget(kind); },
            .playback = [this] { return playback; },
            .recentApps = [this] { return recentApps; },
        };
    }

    DockWindowController::Context controllerContext()
    {
        return {
            .store = store,
            .systemDock = systemDock,
            .spaceProbe = spaceProbe,
            .clock = clock,
            .screens = screens,
            .pointer = pointer,
            .windowServer = windowServer,
            .workspace = workspace,
            .panelWindow = panelWindow,
            .holds = holds,
            .debug = false,
        };
    }

    /// A widget that tells its kind; none for the music.
    std::unique_ptr<BarWidget> makeWidget(WidgetKind kind)
    {
        if (makeOther)
            return makeOther(kind);
        if (kind == WidgetKind::music)
            return nullptr;
        auto widget = std::make_unique<TrialWidget>(QSizeF(80, 40), rawValue(kind));
        widgets[kind] = widget.get();
        return widget;
    }

    DockWindowController::MakeBar makeBar()
    {
        return [this](std::function<void(qreal)> contentWidthChange) {
            reportContentWidth = contentWidthChange;
            return std::make_unique<DockBarView>(barContext(), std::move(contentWidthChange));
        };
    }

    SettingsStore store{storeContext(*this)};
    SystemDock systemDock{preferences, windowServer, screens, systemDockControl, systemSettings};
    SpaceProbe spaceProbe{windowServer};
    Symbols symbols{symbolCatalogue};
    BarHolds holds;
    BarStage stage{{popupWindows, screens, panelWindow, pointer, clock, symbols, holds}};
    BarCommands commands;
    Playback playback;
    qsizetype recentApps = 0;
    /// Makes the widgets instead, for a test that has its own.
    std::function<std::unique_ptr<BarWidget>(WidgetKind)> makeOther;
    /// The last that was made of each kind.
    QHash<WidgetKind, TrialWidget *> widgets;
    /// What the controller gave the bar it built.
    std::function<void(qreal)> reportContentWidth;
};

} // namespace moorline::test
