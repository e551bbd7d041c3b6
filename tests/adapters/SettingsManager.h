#pragma once

#include "ForeignProgram.h"

namespace moorline::test {

/// A program that tells all others on the X server their settings, as a desktop's does.
class SettingsManager final {
public:
    explicit SettingsManager(const QByteArray &iconTheme)
        : m_window(m_program.create({}))
    {
        setIconTheme(iconTheme);
        m_program.ownSelection("_XSETTINGS_S0", m_window);
    }

    void setIconTheme(const QByteArray &name) const { setText("Net/IconThemeName", name); }

    /// The one setting there is from then on.
    void setText(const QByteArray &key, const QByteArray &text) const
    {
        QByteArray bytes = QByteArray::fromHex("00000000") + number(++m_serial) + number(1);
        bytes += QByteArray::fromHex("0100") + number(key.size()).left(2) + padded(key) + number(m_serial);
        bytes += number(text.size()) + padded(text);
        setSettings(bytes);
    }

    void setSettings(const QByteArray &bytes) const
    {
        m_program.setBytes(m_window, "_XSETTINGS_SETTINGS", "_XSETTINGS_SETTINGS", bytes);
    }

private:
    /// Lowest byte first.
    static QByteArray number(qsizetype value)
    {
        QByteArray bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes.append(char((value >> shift) & 0xff));
        return bytes;
    }
    static QByteArray padded(const QByteArray &text) { return text + QByteArray((4 - text.size() % 4) % 4, '\0'); }

    ForeignProgram m_program;
    xcb_window_t m_window;
    mutable qsizetype m_serial = 0;
};

} // namespace moorline::test
