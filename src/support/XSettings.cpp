#include "support/XSettings.h"

#include <QtEndian>

namespace moorline {

namespace {

enum SettingType : quint8 { integer = 0, text = 1, color = 2 };

constexpr quint8 bigEndian = 1;

/// Reads one thing after the other; after the first that is not there in full, nothing but zeros.
class Reader {
public:
    explicit Reader(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_isBigEndian(quint8(byte()) == bigEndian)
    {
        skip(3);
    }

    [[nodiscard]] bool isIntact() const { return m_position <= m_bytes.size(); }

    char byte()
    {
        const QByteArray taken = bytes(1);
        return taken.isEmpty() ? '\0' : taken.front();
    }
    quint16 number16() { return number<quint16>(); }
    quint32 number32() { return number<quint32>(); }
    /// A text, with what fills it up to a multiple of four.
    QByteArray padded(qsizetype size)
    {
        QByteArray taken = bytes(size);
        skip((4 - size % 4) % 4);
        return taken;
    }
    void skip(qsizetype size) { m_position += size; }

private:
    template <typename T>
    T number()
    {
        const QByteArray taken = bytes(sizeof(T));
        if (taken.isEmpty())
            return 0;
        return m_isBigEndian ? qFromBigEndian<T>(taken.constData()) : qFromLittleEndian<T>(taken.constData());
    }
    QByteArray bytes(qsizetype size)
    {
        const qsizetype from = m_position;
        m_position += size;
        return isIntact() ? m_bytes.mid(from, size) : QByteArray();
    }

    QByteArray m_bytes;
    qsizetype m_position = 0;
    bool m_isBigEndian;
};

} // namespace

std::optional<QByteArray> xSettingsText(const QByteArray &settings, const QByteArray &name)
{
    constexpr qsizetype numberSize = 4;
    constexpr qsizetype colorSize = 8;

    Reader reader(settings);
    reader.skip(numberSize); // The serial of the whole.
    const quint32 count = reader.number32();
    for (quint32 i = 0; i < count && reader.isIntact(); ++i) {
        const auto type = quint8(reader.byte());
        reader.skip(1);
        const QByteArray found = reader.padded(reader.number16());
        reader.skip(numberSize); // The serial of its last change.
        if (type == text) {
            const QByteArray value = reader.padded(reader.number32());
            if (found == name)
                return reader.isIntact() ? std::optional(value) : std::nullopt;
        } else if (type == integer || type == color) {
            reader.skip(type == integer ? numberSize : colorSize);
        } else {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace moorline
