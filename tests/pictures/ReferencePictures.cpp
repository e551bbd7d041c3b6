#include "ReferencePictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <algorithm>

namespace moorline::test {

namespace {

/// In levels of 255.
constexpr int tolerance = 4;
/// So many pixels may differ by more: two rasterizers disagree here and there on a curve.
constexpr qsizetype allowed = 4;
constexpr qreal meanTolerance = 0.15;

int distance(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
        std::abs(qBlue(one) - qBlue(other)), std::abs(qAlpha(one) - qAlpha(other))});
}

QString fileName(const QString &name)
{
    return QStringLiteral("%1@%2x.png").arg(name).arg(qRound(qGuiApp->devicePixelRatio()));
}

QString keep(const QImage &picture, const QString &name)
{
    QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/pictures"));
    folder.mkpath(QStringLiteral("."));
    const QString path = folder.filePath(name);
    return picture.save(path) ? path : QStringLiteral("(not kept)");
}

} // namespace

PictureDifference difference(const QImage &picture, const QImage &reference)
{
    if (picture.size() != reference.size())
        return {std::max(picture.width() * picture.height(), 1), 255, {}};
    const QImage one = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage other = reference.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    PictureDifference answer{0, 0, QImage(one.size(), QImage::Format_Grayscale8)};
    answer.picture.fill(Qt::black);
    qint64 sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const int apart = distance(one.pixel(x, y), other.pixel(x, y));
            sum += apart;
            if (apart <= tolerance)
                continue;
            answer.picture.setPixelColor(x, y, Qt::white);
            ++answer.pixels;
        }
    }
    answer.mean = qreal(sum) / qreal(std::max(one.width() * one.height(), 1));
    return answer;
}

QString compareWithReference(const QImage &picture, const QString &name)
{
    const QString file = fileName(name);
    const QString path = QDir(QStringLiteral(REFERENCE_PICTURES)).filePath(file);
    if (qEnvironmentVariableIsSet("MOORLINE_RENEW_PICTURES"))
        return picture.save(path) ? QString() : QStringLiteral("cannot write ") + path;

    const QImage reference(path);
    if (reference.isNull())
        return QStringLiteral("there is no reference %1; the picture: %2").arg(path, keep(picture, file));
    if (reference.size() != picture.size()) {
        return QStringLiteral("%1 is %2 x %3 pixels, was %4 x %5: %6")
            .arg(file)
            .arg(picture.width())
            .arg(picture.height())
            .arg(reference.width())
            .arg(reference.height())
            .arg(keep(picture, file));
    }
    const PictureDifference found = difference(picture, reference);
    if (found.pixels <= allowed && found.mean <= meanTolerance)
        return {};
    return QStringLiteral("%1 differs in %2 pixels, %3 may, by %4 levels on average, %5 may: %6, %7")
        .arg(file)
        .arg(found.pixels)
        .arg(allowed)
        .arg(found.mean)
        .arg(meanTolerance)
        .arg(keep(picture, file), keep(found.picture, QStringLiteral("difference-") + file));
}

} // namespace moorline::test
