#include "theme/Blur.h"

#include <QtMath>
#include <array>

namespace moorline {

namespace {

constexpr int passes = 3;

/// The radii of the boxes whose convolution comes nearest to a Gaussian of this standard deviation.
std::array<int, passes> boxRadii(qreal standardDeviation)
{
    const qreal variance = standardDeviation * standardDeviation;
    const int small = (qFloor(std::sqrt(12 * variance / passes + 1)) - 1) / 2;
    // The variance of a box of radius r is r(r + 1) / 3; each wider box adds 2(r + 1) / 3 to the sum.
    const int wider = qRound((3 * variance - passes * small * (small + 1)) / (2 * (small + 1)));
    std::array<int, passes> radii{};
    for (int pass = 0; pass < passes; ++pass)
        radii.at(size_t(pass)) = small + (pass < wider ? 1 : 0);
    return radii;
}

/// One box blur along the rows. The result is transposed, so that twice in a row blurs both ways and reads memory in
/// order.
QImage rowsBlurredTransposed(const QImage &source, int radius)
{
    QImage result(source.height(), source.width(), QImage::Format_Alpha8);
    const int width = source.width();
    const int box = 2 * radius + 1;
    const auto stride = result.bytesPerLine();
    for (int y = 0; y < source.height(); ++y) {
        const uchar *row = source.constScanLine(y);
        uchar *column = result.bits() + y;
        int sum = 0;
        for (int x = -radius; x < width; ++x) {
            sum += x + radius < width ? row[x + radius] : 0;
            sum -= x > radius ? row[x - radius - 1] : 0;
            if (x >= 0)
                column[x * stride] = uchar((sum + box / 2) / box);
        }
    }
    return result;
}

} // namespace

int blurMargin(qreal standardDeviation)
{
    int margin = 0;
    for (const int radius : boxRadii(standardDeviation))
        margin += radius;
    return margin;
}

QImage blurred(const QImage &mask, qreal standardDeviation)
{
    QImage result = mask;
    for (const int radius : boxRadii(standardDeviation))
        result = rowsBlurredTransposed(rowsBlurredTransposed(result, radius), radius);
    return result;
}

} // namespace moorline
