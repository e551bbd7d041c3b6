#pragma once

#include <QByteArray>
#include <QUrl>
#include <variant>

namespace moorline {

/// The path of a file with a picture.
struct CoverFile {
    QString path;

    bool operator==(const CoverFile &) const = default;
};
/// The web address of a picture.
struct CoverAddress {
    QUrl url;

    bool operator==(const CoverAddress &) const = default;
};
/// A picture itself, as a file would hold it, in base64 and percent-encoded.
struct CoverData {
    QByteArray text;

    bool operator==(const CoverData &) const = default;
};

/// How to get at a picture; monostate where it is not looked for.
using CoverSource = std::variant<std::monostate, CoverFile, CoverAddress, CoverData>;

/// Where the picture at this address really is. Of files, web addresses, and pictures in the address itself, base64 and
/// no vector graphics, those that are not too large; nothing else is looked for.
[[nodiscard]] CoverSource coverSource(const QUrl &url);

} // namespace moorline
