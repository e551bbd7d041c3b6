#pragma once

#include "chrome/DragOffWatcher.h"

namespace moorline {

class BarStage;
class Directories;
class Files;
class IconCache;
class SettingsStore;
class Symbols;
class TrashBin;
class Workspace;

/// What the files in the bar stand on. Everything lent here outlives them.
struct FilesContext {
    SettingsStore &store;
    Workspace &workspace;
    Files &files;
    const Directories &directories;
    TrashBin &trashBin;
    IconCache &icons;
    const Symbols &symbols;
    BarStage &stage;
    Clock &clock;
    const Pointer &pointer;
    DragOffWatcher::PanelFrame panelFrame;
};

} // namespace moorline
