#pragma once

#include "platform/FileWatch.h"

#include <QObject>
#include <list>

namespace moorline {

/// Tells when one of the files that were asked about last comes or goes, for those who show it as there or not.
class FilePresence final : public QObject {
    Q_OBJECT
public:
    /// How many files are kept an eye on: more than anybody pins.
    static constexpr std::size_t mostFollowed = 256;

    using Exists = std::function<bool(const QString &path)>;

    /// `watch` outlives this.
    FilePresence(FileWatch &watch, Exists exists);

    /// From now on, until `mostFollowed` others were asked about after it.
    void follow(const QString &path);

Q_SIGNALS:
    /// From the event loop, once for all that happens in one turn of it.
    void changed();

private:
    struct Followed {
        QString path;
        bool isThere = false;
        std::unique_ptr<FileWatch::Watch> watch;
    };

    void look(Followed &followed);
    void tellSoon();

    FileWatch &m_watch;
    Exists m_exists;
    /// Who was asked about last comes first.
    std::list<Followed> m_followed;
    bool m_isTelling = false;
};

} // namespace moorline
