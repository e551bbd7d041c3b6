#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <optional>

namespace moorline {

/// The badge on the icon of one application.
struct BadgeTile {
    /// Of the application's bundle.
    QString path;
    /// Never empty.
    QString label;

    bool operator==(const BadgeTile &) const = default;
};

/// What applications ask a dock to write on their icons.
class BadgeSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether anyone wants to know. Until then, and after, nothing is listened for and no badge kept.
    virtual void setActive(bool active) = 0;
    /// Whether badges may be looked at now.
    [[nodiscard]] virtual bool isPermitted() const = 0;
    /// Every badge there is, in the order of the icons. Looked for on another thread where that may take a while.
    [[nodiscard]] virtual QCoro::Task<QList<BadgeTile>> tiles() = 0;

Q_SIGNALS:
    /// The last answer may no longer hold. Not every system tells.
    void changed();
};

} // namespace moorline
