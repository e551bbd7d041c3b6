#pragma once

#include <QByteArray>
#include <QString>

namespace moorline::test {

/// What stands in the file of a tone beside the tone.
struct ToneTags {
    QString title;
    QString artist;
    QString album;
    /// A picture, as a PNG file would hold it.
    QByteArray picture;
};

/// A WAV file of a tone, one second for each `seconds`, with an ID3v2.3 tag in a chunk of its own.
[[nodiscard]] QByteArray toneFile(int seconds, const ToneTags &tags);

} // namespace moorline::test
