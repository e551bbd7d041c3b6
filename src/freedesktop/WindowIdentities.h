#pragma once

#include "freedesktop/WindowMatcher.h"

#include <QSet>
#include <functional>
#include <memory>

namespace moorline {

/// Which desktop entry each window belongs to. A window is matched once, and again when its class, its application id
/// or its process is another one, or the entries are.
class WindowIdentities final {
public:
    /// What is known of a process; null where nothing is.
    using ProcessLookup = std::function<const ProcessFacts *(qint64 process)>;

    /// Matches all windows again. Never null; until one is given, no window belongs to any entry.
    void setMatcher(std::shared_ptr<const WindowMatcher> matcher);

    /// More is known of a process: its windows are matched again.
    void forget(qint64 process);

    /// The ids of entries by window. Windows that belong to none are not in it, unless they are dialogs of one that
    /// does.
    [[nodiscard]] QHash<XWindowId, QString> identify(const QList<WindowFacts> &windows, const ProcessLookup &processes);
    /// Of the windows that were identified last, those whose process was not known and might say something else.
    [[nodiscard]] QSet<XWindowId> undecided() const;

private:
    struct Identity {
        QString instanceName;
        QString className;
        QString applicationId;
        std::optional<qint64> process;
        std::optional<QString> entry;
        bool isDecided = true;
    };

    [[nodiscard]] Identity matched(const WindowFacts &window, const ProcessLookup &processes) const;

    std::shared_ptr<const WindowMatcher> m_matcher = std::make_shared<WindowMatcher>();
    QHash<XWindowId, Identity> m_known;
};

} // namespace moorline
