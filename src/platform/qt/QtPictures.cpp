#include "platform/qt/QtPictures.h"

#include "platform/qt/RasterPicture.h"
#include "support/RegularFile.h"

namespace moorline {

namespace {

constexpr int fileThreads = 4;

/// Whoever holds it is still waiting.
class WaitingRequest final : public Pictures::Request {
public:
    explicit WaitingRequest(Pictures::Completion completion)
        : m_completion(std::make_shared<Pictures::Completion>(std::move(completion)))
    {
    }

    [[nodiscard]] std::weak_ptr<Pictures::Completion> completion() const { return m_completion; }

private:
    std::shared_ptr<Pictures::Completion> m_completion;
};

} // namespace

QtPictures::QtPictures()
    : m_files(fileThreads)
{
}

std::unique_ptr<Pictures::Request> QtPictures::read(const QString &path, int side, Completion completion)
{
    const auto make = [path, side] {
        const auto content = regularFileContent(path, largestData);
        return content ? rasterPicture(*content, side) : QImage();
    };
    return begin(m_files, make, std::move(completion));
}

std::unique_ptr<Pictures::Request> QtPictures::decode(const QByteArray &data, int side, Completion completion)
{
    return begin(
        m_data, [data, side] { return rasterPicture(data, side); }, std::move(completion));
}

std::unique_ptr<Pictures::Request> QtPictures::decodeBase64(const QByteArray &text, int side, Completion completion)
{
    const auto make = [text, side] {
        return rasterPicture(QByteArray::fromBase64(QByteArray::fromPercentEncoding(text)), side);
    };
    return begin(m_data, make, std::move(completion));
}

std::unique_ptr<Pictures::Request> QtPictures::begin(
    Background &threads, std::function<QImage()> make, Completion completion)
{
    auto request = std::make_unique<WaitingRequest>(std::move(completion));
    const std::weak_ptr<Completion> waiting = request->completion();
    threads.run<QImage>([waiting, make = std::move(make)] { return waiting.expired() ? QImage() : make(); },
        [waiting](const QImage &picture) {
            // Held for the call: whoever is told may let go of the request within it.
            if (const auto told = waiting.lock())
                (*told)(picture);
        });
    return request;
}

} // namespace moorline
