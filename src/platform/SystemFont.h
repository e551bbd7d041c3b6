#pragma once

#include <QObject>
#include <QString>

namespace moorline {

/// The font that the desktop shows its own texts in, where Qt does not know it by itself.
class SystemFont : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The name of its family, as the desktop says it: nobody looked whether there is such a font. Empty where nothing
    /// is said.
    [[nodiscard]] virtual QString family() const = 0;

Q_SIGNALS:
    void familyChanged();
};

/// Where Qt knows it by itself.
class OwnSystemFont final : public SystemFont {
public:
    [[nodiscard]] QString family() const override { return {}; }
};

} // namespace moorline
