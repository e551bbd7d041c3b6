<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>DockVisibilityMode</name>
    <message>
        <source>Hide when the macOS Dock appears</source>
        <translation>Hide when the desktop’s dock appears</translation>
    </message>
</context>
<context>
    <name>LocationStatus</name>
    <message>
        <source>Denied — falling back to your IP address. Enable it in System Settings › Privacy &amp; Security › Location Services.</source>
        <translation>Denied — falling back to your IP address. Enable it in your desktop’s privacy settings.</translation>
    </message>
</context>
<context>
    <name>moorline::AutoHideNudge</name>
    <message>
        <source>The macOS Dock is sitting underneath this one. Turn on auto-hide to clear the space.</source>
        <translation>The desktop’s dock is sitting underneath this one. Turn on auto-hide to clear the space.</translation>
    </message>
    <message>
        <source>Hide the macOS Dock</source>
        <translation>Hide the desktop’s dock</translation>
    </message>
</context>
<context>
    <name>moorline::DockImporter</name>
    <message>
        <source>Added 1 app from the macOS Dock.</source>
        <translation>Added 1 app from the desktop’s dock.</translation>
    </message>
    <message>
        <source>Added %1 apps from the macOS Dock.</source>
        <translation>Added %1 apps from the desktop’s dock.</translation>
    </message>
    <message>
        <source>Nothing new — everything pinned in the macOS Dock is already here.</source>
        <translation>Nothing new — everything pinned in the desktop’s dock is already here.</translation>
    </message>
</context>
<context>
    <name>moorline::DownloadsButton</name>
    <message>
        <source>Show in Finder</source>
        <translation>Show in File Manager</translation>
    </message>
</context>
<context>
    <name>moorline::DownloadsStackView</name>
    <message>
        <source>Moorline needs permission to read Downloads.
macOS will ask the next time you click.</source>
        <translation>Moorline could not read Downloads.
It will try again the next time you click.</translation>
    </message>
</context>
<context>
    <name>moorline::PinnedItemButton</name>
    <message>
        <source>Show in Finder</source>
        <translation>Show in File Manager</translation>
    </message>
</context>
</TS>
