#pragma once

#include <QFont>
#include <QObject>

namespace moorline {

class SystemFont;

/// Shows every text of the program in the system's own font, whichever that is now. A family that is not installed, or
/// has no outlines to draw in any size, counts as none, and Qt's own choice stays.
class TextFamily final : public QObject {
public:
    /// `systemFont` outlives this.
    explicit TextFamily(const SystemFont &systemFont, QObject *parent = nullptr);
    /// Leaves Qt its own choice.
    ~TextFamily() override;

private:
    void follow();
    static void use(const QFont &font);

    const SystemFont &m_systemFont;
    const QFont m_usual;
};

} // namespace moorline
