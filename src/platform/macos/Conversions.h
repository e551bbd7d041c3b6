#pragma once

#import <Foundation/Foundation.h>

#include <QDateTime>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>
#include <optional>

namespace moorline {

// Qt declares its own conversions for macOS alone; these let every file here be checked on any system.

[[nodiscard]] QString toQString(NSString *text);
[[nodiscard]] NSString *toNSString(const QString &text);
[[nodiscard]] QDateTime toQDateTime(NSDate *date);
[[nodiscard]] QRectF toQRectF(CGRect rect);
[[nodiscard]] CGRect toCGRect(const QRectF &rect);

/// A file by the bytes of its name, whatever they are: NSURL takes no brackets in the text of an address, and newer
/// systems encode every percent sign once more in one that has any. Nil for what is no address, and for a name that
/// ends within.
[[nodiscard]] NSURL *toNSURL(const QUrl &url);
[[nodiscard]] QUrl toQUrl(NSURL *url);
/// The addresses that are some.
[[nodiscard]] NSArray<NSURL *> *toNSURLs(const QList<QUrl> &urls);
[[nodiscard]] QStringList toQStringList(NSArray<NSString *> *texts);
[[nodiscard]] NSArray<NSString *> *toNSArray(const QStringList &texts);

/// A text only when `object` is one.
[[nodiscard]] std::optional<QString> textFrom(id object);

/// Texts, truth values, integers (qlonglong), floating-point numbers, dates, data, arrays, and dictionaries with texts
/// for keys, as deep as a property list of ours ever gets. Whatever else there is becomes an invalid variant.
[[nodiscard]] QVariant variantFrom(id object);

} // namespace moorline
