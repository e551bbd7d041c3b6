#pragma once

#include "platform/FileWatch.h"
#include "platform/Files.h"
#include "platform/TrashBin.h"

#include <QHash>
#include <QSet>
#include <QUrl>

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

    void list(const QString &folder, Choose choose, Listed listed) override
    {
        listings.append({folder, std::move(choose), std::move(listed)});
    }
    void moveToTrash(const QUrl &file, Trashed trashed) override { trashings.append({file, std::move(trashed)}); }
    [[nodiscard]] std::unique_ptr<DragOffer> prepareDrag(const QUrl &file) override
    {
        prepared.append(file);
        return std::make_unique<Offer>(offered, offers);
    }

    /// Answers the listing that was asked for first; absent: the folder cannot be read. False when none was.
    bool answer(const std::optional<QList<FolderEntry>> &found)
    {
        if (listings.isEmpty())
            return false;
        const Listing first = listings.takeFirst();
        first.listed(found ? std::optional(first.choose(*found)) : std::nullopt);
        return true;
    }
    /// The same of what was thrown away first.
    bool finishTrashing(bool succeeds)
    {
        if (trashings.isEmpty())
            return false;
        trashings.takeFirst().trashed(succeeds);
        return true;
    }

    /// What is offered beside the URL.
    QHash<QString, QByteArray> offered;
    /// For which files that was asked.
    QList<QUrl> prepared;
    /// How many of them count.
    std::shared_ptr<int> offers = std::make_shared<int>(0);

    struct Offer final : DragOffer {
        Offer(const QHash<QString, QByteArray> &what, std::shared_ptr<int> count)
            : all(what)
            , living(std::move(count))
        {
            ++*living;
        }
        ~Offer() override { --*living; }
        Q_DISABLE_COPY_MOVE(Offer)
        [[nodiscard]] QHash<QString, QByteArray> formats() const override { return all; }

        const QHash<QString, QByteArray> &all;
        std::shared_ptr<int> living;
    };

    struct Listing {
        QString folder;
        Choose choose;
        Listed listed;
    };
    struct Trashing {
        QUrl file;
        Trashed trashed;
    };
    /// What is under way.
    QList<Listing> listings;
    QList<Trashing> trashings;

    QHash<QString, QString> names;
    QSet<QString> missing;
};

/// Answers when told to.
class FakeTrashBin final : public TrashBin {
public:
    void look(Looked looked) override { looks.append(std::move(looked)); }
    void open() override { ++timesOpened; }

    /// Answers the look that began first. False when there is none.
    bool answer(bool isFull)
    {
        if (looks.isEmpty())
            return false;
        looks.takeFirst()(isFull);
        return true;
    }

    /// What is under way.
    QList<Looked> looks;
    int timesOpened = 0;
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
