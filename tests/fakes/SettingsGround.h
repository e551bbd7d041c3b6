#pragma once

#include "fakes/FakePlatform.h"
#include "settings/SettingsStore.h"

namespace moorline::test {

/// What a settings store is built on, faked. No bundle gives a shortcut.
[[nodiscard]] inline SettingsStore::Context storeContext(
    const Directories &directories, Clock &clock, FileWatch &fileWatch, const Files &files)
{
    return {
        .directories = directories,
        .clock = clock,
        .fileWatch = fileWatch,
        .files = files,
        .applicationExtension = QStringLiteral("app"),
        .makeShortcut = [](const QUrl &) { return std::nullopt; },
    };
}

[[nodiscard]] inline SettingsStore::Context storeContext(FakePlatform &platform)
{
    return storeContext(platform.directories, platform.clock, platform.fileWatch, platform.files);
}

/// The same for a test that needs no more of a system.
struct SettingsGround {
    [[nodiscard]] SettingsStore::Context context(Clock &clock)
    {
        return storeContext(directories, clock, fileWatch, files);
    }

    TemporaryDirectories directories;
    FakeFileWatch fileWatch;
    FakeFiles files;
};

} // namespace moorline::test
