#pragma once

#import <Foundation/Foundation.h>

#include <QDateTime>
#include <QRectF>
#include <QString>
#include <QVariant>
#include <optional>

namespace moorline {

// Qt declares its own conversions for macOS alone; these let every file here be checked on any system.

[[nodiscard]] QString toQString(NSString *text);
[[nodiscard]] NSString *toNSString(const QString &text);
[[nodiscard]] QDateTime toQDateTime(NSDate *date);
[[nodiscard]] QRectF toQRectF(CGRect rect);
[[nodiscard]] CGRect toCGRect(const QRectF &rect);

/// A text only when `object` is one.
[[nodiscard]] std::optional<QString> textFrom(id object);

/// Texts, truth values, integers (qlonglong), floating-point numbers, dates, data, arrays, and dictionaries with texts
/// for keys, as deep as a property list of ours ever gets. Whatever else there is becomes an invalid variant.
[[nodiscard]] QVariant variantFrom(id object);

} // namespace moorline
