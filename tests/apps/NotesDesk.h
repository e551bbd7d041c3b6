#pragma once

#include "apps/Launching.h"
#include "harness/TestCase.h"

namespace moorline::test {

inline const QString notesPath = QStringLiteral("/Applications/My Notes.app");
inline const QString notesIdentifier = QStringLiteral("org.example.notes");
inline const AppShortcut notes{notesPath, notesIdentifier, QStringLiteral("Notes")};
inline const AppShortcut finder{QStringLiteral("/System/Library/CoreServices/Finder.app"),
    QStringLiteral("com.apple.finder"), QStringLiteral("Finder")};
inline const WeatherLocation place{QStringLiteral("Berlin"), std::nullopt, std::nullopt, 52.52, -13.405, std::nullopt};

/// With the notes installed.
struct NotesDesk : Launching {
    NotesDesk() { bundles.bundles[notesPath] = {notesIdentifier, QStringLiteral("Notes"), std::nullopt}; }

    void failLast(const QString &error)
    {
        workspace.openings.last().opened(error);
        QCoreApplication::processEvents();
    }
};

inline QList<QUrl> files(const QStringList &paths)
{
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

inline void announce(const char *line)
{
    QTest::ignoreMessage(QtInfoMsg, line);
}

} // namespace moorline::test
