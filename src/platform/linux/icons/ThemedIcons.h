#pragma once

#include "platform/Clock.h"
#include "platform/Icons.h"
#include "platform/linux/icons/IconThemeFolders.h"

#include <QHash>

namespace moorline {

class FileKinds;
class IconThread;
class SessionIconTheme;

/// Icons from the theme that the session uses: applications by the icon of their desktop entry, files by their type.
/// All the looking and drawing is done on a thread of its own, which is started by the first request; files are looked
/// at on others, as a disk may not answer.
class ThemedIcons final : public Icons {
    Q_OBJECT
public:
    /// More than anybody can see at once; who asks beyond that is told at once that there is no icon.
    static constexpr qsizetype mostWaiting = 2048;

    /// Tells where the application is whose place is asked for, by a call at once or later.
    using Locator = std::function<void(const QString &path, const std::function<void(const QString &)> &located)>;

    /// `theme` outlives this.
    ThemedIcons(Clock &clock, const SessionIconTheme &theme, QStringList bases = IconThemeFolders::standardBases());
    ~ThemedIcons() override;

    /// For applications that are not where they are said to be. Without one they are.
    void setLocator(Locator locator) { m_locator = std::move(locator); }
    /// Applications may have other icons now.
    void noteApplicationsChanged() { Q_EMIT themeChanged(); }

    [[nodiscard]] std::unique_ptr<Request> load(const IconRequest &request, Completion completion) override;

private:
    class Pending;

    IconThread &thread();
    FileKinds &kinds();
    void find(quint64 id, const IconRequest &request, const QStringList &fileIcons = {});
    void answer(quint64 id, const QImage &icon);
    void refreshOnceQuiet();
    void changeTheme();

    Clock &m_clock;
    const SessionIconTheme &m_theme;
    QStringList m_bases;
    Locator m_locator;
    std::unique_ptr<IconThread> m_thread;
    std::unique_ptr<FileKinds> m_kinds;
    std::unique_ptr<Clock::Timer> m_refresh;
    /// Who waits, by number. Everyone leaves by their own.
    QHash<quint64, Pending *> m_waiting;
    quint64 m_lastId = 0;
};

} // namespace moorline
