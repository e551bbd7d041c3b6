#pragma once

#include "platform/Clock.h"
#include "platform/Icons.h"
#include "platform/linux/icons/IconThemeFolders.h"

#include <QHash>

namespace moorline {

class IconThread;
class SessionIconTheme;

/// Icons from the theme that the session uses: applications by the icon of their desktop entry, files by their type.
/// All the looking and drawing is done on a thread of its own, which is started by the first request.
class ThemedIcons final : public Icons {
    Q_OBJECT
public:
    /// More than anybody can see at once; who asks beyond that is told at once that there is no icon.
    static constexpr qsizetype mostWaiting = 2048;

    /// `theme` outlives this.
    ThemedIcons(Clock &clock, const SessionIconTheme &theme, QStringList bases = IconThemeFolders::standardBases());
    ~ThemedIcons() override;

    [[nodiscard]] std::unique_ptr<Request> load(const IconRequest &request, Completion completion) override;

private:
    class Pending;

    IconThread &thread();
    void answer(quint64 id, const QImage &icon);
    void refreshOnceQuiet();
    void changeTheme();

    Clock &m_clock;
    const SessionIconTheme &m_theme;
    QStringList m_bases;
    std::unique_ptr<IconThread> m_thread;
    std::unique_ptr<Clock::Timer> m_refresh;
    /// Who waits, by number. Everyone leaves by their own.
    QHash<quint64, Pending *> m_waiting;
    quint64 m_lastId = 0;
};

} // namespace moorline
