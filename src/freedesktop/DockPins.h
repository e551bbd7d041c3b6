#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace moorline {

class EntryCatalogue;

/// What is pinned to another dock, as that dock names it.
struct DockPin {
    enum class Kind {
        application,
        /// Whichever the user prefers.
        fileManager,
        browser,
    };

    Kind kind = Kind::application;
    /// Without ".desktop".
    QString id = {};
    /// Of its entry. Empty where only the id is told.
    QString path = {};

    bool operator==(const DockPin &) const = default;
};

/// From an id with or without ".desktop", a path or an address. Absent for what is no application: a part of the dock
/// itself, a folder, a web address.
[[nodiscard]] std::optional<DockPin> pinNamed(const QString &name);
[[nodiscard]] QList<DockPin> pinsNamed(const QStringList &names);

/// From one of Plank's items.
[[nodiscard]] std::optional<DockPin> plankPin(const QByteArray &item);
/// From the file in which Plasma keeps its panels.
[[nodiscard]] QList<DockPin> kdePins(const QByteArray &appletsrc);
/// From the settings of Cinnamon's list of windows.
[[nodiscard]] QList<DockPin> cinnamonPins(const QByteArray &settings);

/// One of the launchers on XFCE's panels.
struct XfceLauncher {
    int plugin = 0;
    /// Files in a folder of its own, or ids.
    QStringList items = {};

    bool operator==(const XfceLauncher &) const = default;
};

/// In the order of the panels, from the file in which XFCE keeps them.
[[nodiscard]] QList<XfceLauncher> xfceLaunchers(const QByteArray &channel);
/// From a launcher's own copy of an entry at `path`: the entry it was made from, else the copy.
[[nodiscard]] DockPin xfcePin(const QByteArray &copy, const QString &path);

/// A pin in the words of "persistent-apps".
[[nodiscard]] QVariantMap dockTile(const DockPin &pin, const EntryCatalogue &entries);

} // namespace moorline
