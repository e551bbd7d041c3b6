#pragma once

#include "platform/Pictures.h"
#include "platform/qt/Background.h"

namespace moorline {

/// Pictures through Qt's readers of PNG, JPEG, GIF, BMP, WebP, TIFF, AVIF, HEIC and JPEG XL, as far as they are
/// installed. What they hold decides, whatever a file is called.
class QtPictures final : public Pictures {
public:
    explicit QtPictures();

    [[nodiscard]] std::unique_ptr<Request> read(const QString &path, int side, Completion completion) override;
    [[nodiscard]] std::unique_ptr<Request> decode(const QByteArray &data, int side, Completion completion) override;
    [[nodiscard]] std::unique_ptr<Request> decodeBase64(
        const QByteArray &text, int side, Completion completion) override;

private:
    [[nodiscard]] static std::unique_ptr<Request> begin(
        Background &threads, std::function<QImage()> make, Completion completion);

    // A file on a disk that does not answer keeps its thread for as long as that takes, and no data from being decoded.
    Background m_files;
    Background m_data;
};

} // namespace moorline
