#import "platform/macos/MacFiles.h"

#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

using Found = std::optional<QList<FolderEntry>>;

NSArray<NSURLResourceKey> *wantedFacts()
{
    return @[ NSURLIsHiddenKey, NSURLAddedToDirectoryDateKey, NSURLContentModificationDateKey ];
}

/// Nil where the file system does not tell.
id fact(NSURL *url, NSURLResourceKey key)
{
    id value = nil;
    return [url getResourceValue:&value forKey:key error:nil] ? value : nil;
}

std::optional<FolderEntry::Time> timeOf(id date)
{
    if (![date isKindOfClass:[NSDate class]])
        return std::nullopt;
    const std::chrono::duration<double> seconds(static_cast<NSDate *>(date).timeIntervalSince1970);
    return FolderEntry::Time(std::chrono::floor<std::chrono::milliseconds>(seconds));
}

FolderEntry described(NSURL *url)
{
    const QByteArray path(url.fileSystemRepresentation);
    const id isHidden = fact(url, NSURLIsHiddenKey);
    return {
        .name = path.mid(path.lastIndexOf('/') + 1),
        .isHidden = [isHidden isKindOfClass:[NSNumber class]] && static_cast<NSNumber *>(isHidden).boolValue,
        .added = timeOf(fact(url, NSURLAddedToDirectoryDateKey)),
        .modified = timeOf(fact(url, NSURLContentModificationDateKey)),
    };
}

Found entriesIn(const QString &folder)
{
    NSURL *place = toNSURL(QUrl::fromLocalFile(folder));
    if (!place)
        return std::nullopt;
    NSArray<NSURL *> *urls = [NSFileManager.defaultManager contentsOfDirectoryAtURL:place
                                                         includingPropertiesForKeys:wantedFacts()
                                                                            options:0
                                                                              error:nil];
    if (!urls)
        return std::nullopt;
    QList<FolderEntry> entries;
    for (NSURL *url in urls)
        entries.append(described(url));
    return entries;
}

bool trash(const QUrl &file)
{
    NSURL *url = toNSURL(file);
    return url && [NSFileManager.defaultManager trashItemAtURL:url resultingItemURL:nil error:nil];
}

} // namespace

QString MacFiles::displayName(const QString &path) const
{
    return toQString([NSFileManager.defaultManager displayNameAtPath:toNSString(path)]);
}

bool MacFiles::exists(const QString &path) const
{
    return [NSFileManager.defaultManager fileExistsAtPath:toNSString(path)];
}

void MacFiles::list(const QString &folder, Choose choose, Listed listed)
{
    const auto read = [folder, choose = std::move(choose)]() -> Found {
        @autoreleasepool {
            Found found = entriesIn(folder);
            return found ? Found(choose(std::move(*found))) : std::nullopt;
        }
    };
    m_reading.run<Found>(read, std::move(listed));
}

void MacFiles::moveToTrash(const QUrl &file, Trashed trashed)
{
    const auto move = [file] {
        @autoreleasepool {
            return trash(file);
        }
    };
    m_trashing.run<bool>(move, std::move(trashed));
}

std::unique_ptr<Files::DragOffer> MacFiles::prepareDrag([[maybe_unused]] const QUrl &file)
{
    return nullptr;
}

} // namespace moorline
