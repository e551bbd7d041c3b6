#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

constexpr int maximumDepth = 16;

QVariant variantAtDepth(id object, int depth);

QVariant variantFromNumber(NSNumber *number)
{
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return bool(number.boolValue);
    if (CFNumberIsFloatType((__bridge CFNumberRef)number))
        return number.doubleValue;
    return qlonglong(number.longLongValue);
}

QVariant variantFromArray(NSArray *array, int depth)
{
    QVariantList list;
    for (id element in array)
        list.append(variantAtDepth(element, depth + 1));
    return list;
}

QVariant variantFromDictionary(NSDictionary *dictionary, int depth)
{
    QVariantMap map;
    for (id key in dictionary) {
        if (const auto name = textFrom(key))
            map.insert(*name, variantAtDepth(dictionary[key], depth + 1));
    }
    return map;
}

QVariant variantFromData(NSData *data)
{
    return QByteArray(static_cast<const char *>(data.bytes), qsizetype(data.length));
}

QVariant variantAtDepth(id object, int depth)
{
    if (depth > maximumDepth)
        return {};
    if (const auto text = textFrom(object))
        return *text;
    if ([object isKindOfClass:[NSNumber class]])
        return variantFromNumber(object);
    if ([object isKindOfClass:[NSArray class]])
        return variantFromArray(object, depth);
    if ([object isKindOfClass:[NSDictionary class]])
        return variantFromDictionary(object, depth);
    if ([object isKindOfClass:[NSData class]])
        return variantFromData(object);
    if ([object isKindOfClass:[NSDate class]])
        return toQDateTime(object);
    return {};
}

} // namespace

QString toQString(NSString *text)
{
    const NSUInteger length = text.length;
    QString result(qsizetype(length), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar *>(result.data()) range:NSMakeRange(0, length)];
    return result;
}

NSString *toNSString(const QString &text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.utf16())
                                   length:NSUInteger(text.size())];
}

NSURL *toNSURL(const QUrl &url)
{
    if (!url.isLocalFile() || !url.host().isEmpty())
        return [NSURL URLWithString:toNSString(url.toString(QUrl::FullyEncoded))];
    const QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    if (path.isEmpty() || path.contains('\0'))
        return nil;
    return [NSURL fileURLWithFileSystemRepresentation:path.constData()
                                          isDirectory:path.endsWith('/')
                                        relativeToURL:nil];
}

QUrl toQUrl(NSURL *url)
{
    return QUrl(toQString(url.absoluteString));
}

NSArray<NSURL *> *toNSURLs(const QList<QUrl> &urls)
{
    NSMutableArray<NSURL *> *result = [NSMutableArray array];
    for (const QUrl &url : urls) {
        if (NSURL *address = toNSURL(url))
            [result addObject:address];
    }
    return result;
}

QStringList toQStringList(NSArray<NSString *> *texts)
{
    QStringList result;
    for (NSString *text in texts)
        result.append(toQString(text));
    return result;
}

NSArray<NSString *> *toNSArray(const QStringList &texts)
{
    NSMutableArray<NSString *> *result = [NSMutableArray array];
    for (const QString &text : texts)
        [result addObject:toNSString(text)];
    return result;
}

QDateTime toQDateTime(NSDate *date)
{
    return QDateTime::fromMSecsSinceEpoch(qRound64(date.timeIntervalSince1970 * 1000));
}

QRectF toQRectF(CGRect rect)
{
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

CGRect toCGRect(const QRectF &rect)
{
    return CGRectMake(rect.x(), rect.y(), rect.width(), rect.height());
}

std::optional<QString> textFrom(id object)
{
    if (![object isKindOfClass:[NSString class]])
        return std::nullopt;
    return toQString(object);
}

QVariant variantFrom(id object)
{
    return variantAtDepth(object, 0);
}

} // namespace moorline
