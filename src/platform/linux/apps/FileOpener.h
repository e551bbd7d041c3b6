#pragma once

#include "platform/linux/desktop/MountLooks.h"
#include "platform/qt/Background.h"

#include <QStringList>
#include <QUrl>

namespace moorline {

class AppStarter;
class DesktopEntries;

/// Opens files with the applications that are chosen for their kind. A desktop entry or a program is a file as any
/// other here: what opens it reads it, and nothing of it is run.
class FileOpener final : public QObject {
    Q_OBJECT
public:
    /// All of them outlive it.
    FileOpener(DesktopEntries &entries, AppStarter &starter, Clock &clock);

    /// Nothing happens where the file is gone, its disk does not answer, or nobody opens its kind.
    void open(const QUrl &file);

private:
    void openAs(const QUrl &file, const QStringList &types);
    void search(const QUrl &file, const QStringList &types);

    DesktopEntries &m_entries;
    AppStarter &m_starter;
    MountLooks m_looks;
    /// What is said of types is read when it is asked for: nobody needs most of it ever.
    Background m_searching;
};

/// The kinds that a file is of, the narrowest first; none when it is gone. It may wait for a disk.
[[nodiscard]] QStringList fileTypes(const QByteArray &path);

} // namespace moorline
