#pragma once

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace moorline::test {

/// Icon themes in a folder of their own.
class IconsOnDisk final {
public:
    /// Below everything; a folder of themes is `base`.
    [[nodiscard]] QString path(const QString &below) const { return m_root.filePath(below); }
    [[nodiscard]] QStringList bases() const { return {path(QStringLiteral("home")), path(QStringLiteral("system"))}; }

    QString write(const QString &below, const QByteArray &content) const
    {
        const QString written = path(below);
        QDir().mkpath(QFileInfo(written).path());
        QFile file(written);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return {};
        return written;
    }

    QString writePng(const QString &below, const QColor &color, const QSize &size = {48, 48}) const
    {
        const QString written = path(below);
        QDir().mkpath(QFileInfo(written).path());
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(color);
        return image.save(written, "PNG") ? written : QString();
    }

    QString writeSvg(const QString &below, const QByteArray &color, const QByteArray &inside = {}) const
    {
        return write(below,
            "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='16' height='16'>"
            "<rect width='16' height='16' fill='"
                + color + "'/>" + inside + "</svg>");
    }

    /// A theme with folders of PNG files of a size, such as "48x48/apps".
    void writeTheme(const QString &below, const QList<int> &sizes, const QByteArray &inherits = {}) const
    {
        QByteArray folders;
        QByteArray groups;
        for (const int size : sizes) {
            const QByteArray number = QByteArray::number(size);
            folders += number + "x" + number + "/apps,";
            groups += "[" + number + "x" + number + "/apps]\nSize=" + number + "\nType=Fixed\n";
        }
        write(below + QStringLiteral("/index.theme"),
            "[Icon Theme]\nName=Test\nInherits=" + inherits + "\nDirectories=" + folders + "\n" + groups);
    }

private:
    QTemporaryDir m_root;
};

/// The colour in the middle.
inline QColor middle(const QImage &image)
{
    return image.isNull() ? QColor() : image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace moorline::test
