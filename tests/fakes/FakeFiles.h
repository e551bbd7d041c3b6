#pragma once

#include "platform/FileWatch.h"
#include "platform/Files.h"

#include <QHash>
#include <QSet>

namespace moorline::test {

/// Shows the last part of the path, unless it was given another name for it.
class FakeFiles final : public Files {
public:
    [[nodiscard]] QString displayName(const QString &path) const override
    {
        const QString last = path.section(u'/', -1);
        return names.value(path, last.isEmpty() ? path : last);
    }
    /// Every file is there but these.
    [[nodiscard]] bool exists(const QString &path) const override { return !missing.contains(path); }

    QHash<QString, QString> names;
    QSet<QString> missing;
};

/// Sees nothing until it is told.
class FakeFileWatch final : public FileWatch {
public:
    [[nodiscard]] std::unique_ptr<Watch> watch(const QString &path, Callback changed) override
    {
        return std::make_unique<Watching>(m_watches, path, std::move(changed));
    }

    void tell(const QString &path) const
    {
        for (const Watching *watching : QSet<const Watching *>(*m_watches)) {
            if (m_watches->contains(watching) && watching->path == path)
                watching->changed();
        }
    }
    [[nodiscard]] qsizetype watched() const { return m_watches->size(); }

private:
    struct Watching;
    using Watches = std::shared_ptr<QSet<const Watching *>>;
    struct Watching final : Watch {
        Watching(Watches others, QString watchedPath, Callback callback)
            : watches(std::move(others))
            , path(std::move(watchedPath))
            , changed(std::move(callback))
        {
            watches->insert(this);
        }
        ~Watching() override { watches->remove(this); }

        Watches watches;
        QString path;
        Callback changed;
    };

    Watches m_watches = std::make_shared<QSet<const Watching *>>();
};

} // namespace moorline::test
