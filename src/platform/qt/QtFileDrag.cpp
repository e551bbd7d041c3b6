#include "platform/qt/QtFileDrag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QPixmap>

namespace moorline {

namespace {

/// A file, and what was prepared for whoever it is given to, who may ask for it after the drop.
class FileData final : public QMimeData {
public:
    FileData(const QUrl &url, std::unique_ptr<Files::DragOffer> offer)
        : m_offer(std::move(offer))
    {
        setUrls({url});
        const QHash<QString, QByteArray> formats = m_offer ? m_offer->formats() : QHash<QString, QByteArray>();
        for (auto format = formats.begin(); format != formats.end(); ++format)
            setData(format.key(), format.value());
    }

private:
    std::unique_ptr<Files::DragOffer> m_offer;
};

} // namespace

void carryWithQt(CarriedFile file)
{
    // Qt deletes it when the other program has what it wants of it, which may be when whatever it began on is gone.
    auto *drag = new QDrag(QCoreApplication::instance());
    drag->setMimeData(new FileData(file.url, std::move(file.offer)));
    const QPixmap picture = QPixmap::fromImage(file.picture);
    drag->setPixmap(picture);
    drag->setHotSpot(QRectF({}, picture.deviceIndependentSize()).center().toPoint());
    // What becomes of it is the other program's affair: some say that they moved what they were offered to copy.
    drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
}

} // namespace moorline
